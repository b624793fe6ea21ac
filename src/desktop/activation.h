#pragma once

namespace stowlark {

/// Brings the application in front of the others, where that takes more than to activate its window. Needs a
/// QApplication. One source per system.
void bringToFront();

} // namespace stowlark
