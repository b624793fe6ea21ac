#pragma once

#include "desktop/macos/take_urls.h"

/// AppKit's panels. Each is a sheet of the application's window, or stands alone where none is to be seen.
namespace stowlark::appkit {

/// Texts are UTF-8.
struct OpenPanel {
    bool choosesFiles = false;
    bool choosesFolders = false;
    bool choosesSeveral = false;
    bool choosesArchives = false; ///< and all other files that are data, no packages
    const char *message = "";
    const char *prompt = "";      ///< on the button that accepts
    const char *folder = nullptr; ///< where it begins, as an encoded URL; null for where it ended last
};

/// Shows a panel to choose existing items, and returns. `take` is called once, later: with what was chosen,
/// or an empty text if the user cancels.
void showOpenPanel(const OpenPanel &options, TakeUrls take, void *context);

/// Shows an alert with the one button "OK". `done` is called once, when the user has dismissed it: later, or
/// where the alert stands alone before this returns. UTF-8; `style` is an NSAlertStyle.
void showAlert(const char *title, const char *message, int style, void (*done)(void *context), void *context);

} // namespace stowlark::appkit
