#pragma once

#include "foundation/path_name.h"

namespace stowlark {

/// Copies the file, symbolic link or whole folder `source` to `target`, which must not exist while its folder
/// must. Keeps modes, times, links as links, extended attributes and holes, and names byte for byte; shares
/// contents where the file system can. Uses all cores and blocks until done. Throws PlatformError, naming the
/// item that failed; what was copied before stays. Anything but a file, folder or link is such a failure.
void copyItem(const Path &source, const Path &target);

} // namespace stowlark
