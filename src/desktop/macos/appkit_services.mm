#include "desktop/macos/appkit_services.h"

#import <AppKit/AppKit.h>

/// Answers the services that Info.plist declares.
@interface ServiceProvider : NSObject
@property(nonatomic) stowlark::appkit::TakeUrls take;
@property(nonatomic) void *context;
- (void)extractFiles:(NSPasteboard *)pasteboard userData:(NSString *)userData error:(NSString **)error;
@end

@implementation ServiceProvider

- (void)extractFiles:(NSPasteboard *)pasteboard userData:(NSString *)userData error:(NSString **)error {
    NSMutableArray<NSString *> *urls = [NSMutableArray array];
    for (NSPasteboardItem *item in pasteboard.pasteboardItems) {
        NSData *data = [item dataForType:NSPasteboardTypeFileURL];
        NSURL *url = data == nil ? nil : [NSURL URLWithDataRepresentation:data relativeToURL:nil];
        if (url != nil) {
            NSURL *path = url.filePathURL; // the Finder may give the file's number instead
            [urls addObject:(path != nil ? path : url).absoluteString];
        }
    }
    if (urls.count > 0) {
        self.take(self.context, [urls componentsJoinedByString:@"\n"].UTF8String);
    }
}

@end

namespace stowlark::appkit {

void provideServices(TakeUrls take, void *context) {
    static ServiceProvider *provider = [[ServiceProvider alloc] init]; // which the application does not keep
    provider.take = take;
    provider.context = context;
    NSApp.servicesProvider = provider;
}

} // namespace stowlark::appkit
