#pragma once

#include <sys/stat.h>

/// How one system copies what an open file or folder holds. One source per system.
/// Each function returns errno, 0 on success.
namespace stowlark {

/// Makes the new file `name` in the open folder `folder`, with the contents, holes, extended attributes, mode
/// and times of the regular file `source`, whose status is `info`. Shares the contents where the file system
/// can. A file that was begun stays on failure.
int copyFile(int source, const struct stat &info, int folder, const char *name);

/// Gives the open folder `target` the extended attributes, mode and times of the folder `source`.
int copyFolderMetadata(int source, const struct stat &info, int target);

} // namespace stowlark
