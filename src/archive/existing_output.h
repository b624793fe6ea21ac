#pragma once

#include "foundation/path_name.h"

#include <vector>

namespace stowlark {

/// Removes whatever stands where an archive of `files` is to be written: a file, a link or a whole folder.
/// Nothing there is no error. Throws PlatformError, without having removed anything, if that item is one of
/// `files` or holds one: the archive would be made of what was just deleted.
void removeExistingOutput(const Path &output, const std::vector<Path> &files);

} // namespace stowlark
