#pragma once

#include "foundation/path_name.h"

#include <string>
#include <vector>

namespace stowlark {

/// Makes a folder in the temporary folder, named `prefix` and a fresh UUID, which on Linux only this user may
/// enter. Blocks; throws PlatformError.
Path createTemporaryFolder(std::string_view prefix);

/// The `n`th other name for an item whose own name is taken: "_n" before its last extension. n = 0 is `name`
/// itself.
std::string numberedName(const std::string &name, int n);

/// Copies the items into a fresh folder in the temporary folder, in order, each under its own name or, where
/// that is taken, the first free numbered one. Returns the folder. Blocks until done. Throws PlatformError;
/// what was copied before stays.
Path stageFiles(const std::vector<Path> &files);

} // namespace stowlark
