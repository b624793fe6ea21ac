#pragma once

#include <QWindow>

namespace stowlark {

/// Lets the content of a window that is shown reach under its title bar, where the system can. Returns how
/// many points of the content's upper edge the bar covers, else 0. One source per system.
double extendUnderTitleBar(const QWindow &window);

} // namespace stowlark
