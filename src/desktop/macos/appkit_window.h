#pragma once

namespace stowlark::appkit {

/// Lets the content of the NSView's window reach under its title bar; returns the height that the bar covers.
double extendUnderTitleBar(void *view);

/// Sends one of AppKit's actions, such as "performClose:", to what takes it first: a panel with the keyboard,
/// else the window, else the application.
void sendAction(const char *selector);

} // namespace stowlark::appkit
