#include "desktop/macos/appkit_alert.h"

#import <AppKit/AppKit.h>

namespace stowlark::appkit {

void runAlert(const char *title, const char *message, int style) {
    @autoreleasepool {
        NSAlert *alert = [[NSAlert alloc] init];
        alert.messageText = @(title);
        alert.informativeText = @(message);
        alert.alertStyle = static_cast<NSAlertStyle>(style);
        [alert addButtonWithTitle:@"OK"];
        [alert runModal];
    }
}

} // namespace stowlark::appkit
