#include "desktop/activation.h"

#import <AppKit/AppKit.h>

namespace stowlark {

void bringToFront() {
    [NSApp activateIgnoringOtherApps:YES];
}

} // namespace stowlark
