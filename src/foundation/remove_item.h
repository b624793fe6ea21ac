#pragma once

#include "foundation/path_name.h"

namespace stowlark {

/// Removes a file, a symbolic link (never what it points to) or a whole folder. Blocks until done.
/// Throws PlatformError, naming the item that failed; what was removed before is gone.
void removeItem(const Path &item);

/// Removes a folder that this program made, also where folders in it are read-only. Returns false if
/// something is left.
bool removeOwnFolder(const Path &folder) noexcept;

} // namespace stowlark
