#pragma once

namespace stowlark {

/// Gives the application a dark palette where no desktop is there to say which it prefers.
void applyAppearance();

} // namespace stowlark
