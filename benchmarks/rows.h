#pragma once

#include "measure.h"

#include "foundation/path_name.h"

#include <vector>

namespace stowlark {

/// The lines of the table, in order. `folder` is where they may work; it must hold the folder for temporary
/// files, and what they work on is made there when the first of them needs it.
std::vector<Row> allRows(const Path &folder);

} // namespace stowlark
