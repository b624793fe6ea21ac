#pragma once

#include "diskimage/command_line.h"

namespace stowlark {

/// Unpacks what the volume of a disk image holds into an empty folder, for `removeAttached`. On failure the
/// folder is empty again. Throws PlatformError or ImageError.
void attachImage(const AttachCommand &command);

} // namespace stowlark
