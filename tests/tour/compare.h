#pragma once

#include "foundation/path_name.h"

#include <cstdint>
#include <string>
#include <vector>

namespace stowlark {

/// The size of a file, or of all files in a folder, in bytes.
std::uintmax_t totalSize(const Path &item);

/// Where what was extracted into `folder` differs from the originals, which are to be its only items: names,
/// kinds, modes and every byte. Empty if nowhere.
std::string differences(const std::vector<Path> &originals, const Path &folder);

} // namespace stowlark
