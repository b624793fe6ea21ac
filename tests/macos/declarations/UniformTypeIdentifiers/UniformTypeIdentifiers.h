// The same of Uniform Type Identifiers.
#import <Foundation/Foundation.h>

STOWLARK_FROM(11.0)
@interface UTType : NSObject
@end
extern "C" UTType *const UTTypeZIP STOWLARK_FROM(11.0);
extern "C" UTType *const UTTypeGZIP STOWLARK_FROM(11.0);
extern "C" UTType *const UTTypeData STOWLARK_FROM(11.0);
