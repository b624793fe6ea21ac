#pragma once

namespace stowlark {

/// Brings the application in front of the others. Needs a QApplication. One source per system.
void bringToFront();

} // namespace stowlark
