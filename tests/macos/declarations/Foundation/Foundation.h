// Declarations of our own of what the product uses of Foundation: enough to compile, nothing to link.
#include <stddef.h>
#include <stdint.h>

#define STOWLARK_FROM(version) __attribute__((availability(macos, introduced = version)))

typedef bool BOOL;
#define YES __objc_yes
#define NO __objc_no
#define nil nullptr
typedef long NSInteger;
typedef unsigned long NSUInteger;
typedef double CGFloat;
typedef struct NSFastEnumerationState NSFastEnumerationState;
@class NSString;
extern "C" SEL NSSelectorFromString(NSString *name);

__attribute__((objc_root_class))
@interface NSObject
+ (instancetype)alloc;
- (instancetype)init;
@end

@protocol NSFastEnumeration
- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState *)state
                                  objects:(id __unsafe_unretained[])buffer
                                    count:(NSUInteger)count;
@end

@interface NSString : NSObject
@property(readonly) const char *UTF8String;
+ (instancetype)stringWithUTF8String:(const char *)text;
@end

@interface NSData : NSObject
@end

@interface NSArray<__covariant Item> : NSObject <NSFastEnumeration>
@property(readonly) NSUInteger count;
+ (instancetype)array;
+ (instancetype)arrayWithObjects:(const Item[])objects count:(NSUInteger)count;
- (NSString *)componentsJoinedByString:(NSString *)separator;
@end

@interface NSMutableArray<Item> : NSArray <Item>
- (void)addObject:(Item)item;
@end

@interface NSURL : NSObject
@property(readonly, copy) NSString *absoluteString;
@property(readonly, copy) NSURL *filePathURL;
+ (instancetype)URLWithString:(NSString *)text;
+ (NSURL *)URLWithDataRepresentation:(NSData *)data relativeToURL:(NSURL *)base STOWLARK_FROM(10.11);
@end
