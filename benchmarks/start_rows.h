#pragma once

#include "measure.h"

#include "foundation/path_name.h"

#include <vector>

namespace stowlark {

/// Adds the rows of Stowlark's start, compared with a program that shows a window with one button: the time
/// to the first frame, and on Linux the memory from then on, with the renderer that Qt chooses and with its
/// software renderer. Says so and adds none where there is no display.
void addStartRows(std::vector<Row> &rows, const Path &folder);

} // namespace stowlark
