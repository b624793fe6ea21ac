#include "desktop/macos/appkit_workspace.h"

#import <AppKit/AppKit.h>

namespace stowlark::appkit {

void reveal(const char *url) {
    @autoreleasepool {
        NSURL *item = [NSURL URLWithString:@(url)];
        if (item != nil) {
            [NSWorkspace.sharedWorkspace activateFileViewerSelectingURLs:@[ item ]];
        }
    }
}

} // namespace stowlark::appkit
