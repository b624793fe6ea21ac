#include "desktop/title_bar.h"

#include "desktop/macos/appkit_window.h"

#include <QGuiApplication>

namespace stowlark {

double extendUnderTitleBar(const QWindow &window) {
    if (QGuiApplication::platformName() != u"cocoa") { // tests have windows that AppKit does not know
        return 0;
    }
    void *view = reinterpret_cast<void *>(window.winId()); // NOLINT(performance-no-int-to-ptr)
    return appkit::extendUnderTitleBar(view);
}

} // namespace stowlark
