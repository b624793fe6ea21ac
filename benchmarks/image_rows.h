#pragma once

#include "measure.h"

#include "foundation/path_name.h"

#include <vector>

namespace stowlark {

/// Adds the rows of the stand-in for the disk-image tool, if that is used here: making an image compared with
/// what compresses the same files, in one file, on one core.
void addImageRows(std::vector<Row> &rows, const Path &folder);

} // namespace stowlark
