#pragma once

namespace stowlark {

/// What it takes besides to bring the application in front of the others, when its window has just been
/// activated. Needs a QApplication. One source per system.
void bringToFront();

} // namespace stowlark
