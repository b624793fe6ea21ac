#pragma once

namespace stowlark::appkit {

/// Lets the content of the NSView's window reach under its title bar; returns the height that the bar covers.
double extendUnderTitleBar(void *view);

} // namespace stowlark::appkit
