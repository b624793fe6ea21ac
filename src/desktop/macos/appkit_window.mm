#include "desktop/macos/appkit_window.h"

#import <AppKit/AppKit.h>

namespace stowlark::appkit {

double extendUnderTitleBar(void *view) {
    NSWindow *window = ((__bridge NSView *) view).window;
    window.styleMask |= NSWindowStyleMaskFullSizeContentView;
    window.titlebarAppearsTransparent = YES;
    return window.frame.size.height - window.contentLayoutRect.size.height;
}

void sendAction(const char *selector) {
    [NSApp sendAction:NSSelectorFromString(@(selector)) to:nil from:nil];
}

} // namespace stowlark::appkit
