#include "desktop/macos/appkit_open_panel.h"

#import <AppKit/AppKit.h>

namespace stowlark::appkit {

void runOpenPanel(TakeUrls take, void *context) {
    @autoreleasepool {
        NSOpenPanel *panel = [NSOpenPanel openPanel];
        panel.canChooseFiles = YES;
        panel.canChooseDirectories = YES;
        panel.allowsMultipleSelection = YES;
        if ([panel runModal] != NSModalResponseOK) {
            return;
        }
        NSMutableArray<NSString *> *urls = [NSMutableArray array];
        for (NSURL *url in panel.URLs) {
            [urls addObject:url.absoluteString];
        }
        if (urls.count > 0) {
            take(context, [urls componentsJoinedByString:@"\n"].UTF8String);
        }
    }
}

} // namespace stowlark::appkit
