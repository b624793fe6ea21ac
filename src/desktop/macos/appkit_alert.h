#pragma once

namespace stowlark::appkit {

/// Shows a modal alert with the one button "OK" until it is dismissed. UTF-8; `style` is an NSAlertStyle.
void runAlert(const char *title, const char *message, int style);

} // namespace stowlark::appkit
