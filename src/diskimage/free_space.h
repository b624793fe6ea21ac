#pragma once

#include "foundation/path_name.h"

#include <cstdint>

namespace stowlark {

/// Throws ImageError if the file system of `folder` has no room for `bytes` more.
void requireSpace(std::uint64_t bytes, const Path &folder);

} // namespace stowlark
