#pragma once

#include "foundation/path_name.h"

#include <string>
#include <vector>

namespace stowlark {

/// What was put into a folder: paths relative to it, each after that of the folder that holds it; those of
/// folders end in a slash.
using AttachedItems = std::vector<std::string>;

/// Writes the list of items into `mountPoint`, as a hidden file in the place of any that has its name. Throws
/// PlatformError.
void listAttached(const AttachedItems &items, const Path &mountPoint);

/// Removes from `mountPoint` exactly what its list names, read-only folders too, and then the list. Throws
/// ImageError if there is no list, or if something is left: what is not on it, and the folders above that.
void removeAttached(const Path &mountPoint);

} // namespace stowlark
