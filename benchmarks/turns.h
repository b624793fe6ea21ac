#pragma once

#include "foundation/path_name.h"

namespace stowlark {

/// Stages and removes 100,000 files, and prints the longest time that the event loop stood still meanwhile.
/// Works in `folder`, as the lines of the table do.
void measureTurns(const Path &folder);

/// Drops those 100,000 files on the real window, without a screen, and scrolls through them.
void measureWindowTurns(const Path &folder);

} // namespace stowlark
