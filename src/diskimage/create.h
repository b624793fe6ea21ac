#pragma once

#include "diskimage/command_line.h"

namespace stowlark {

/// Makes a disk image whose volume holds what the source folder holds. Memory hardly grows with the
/// input: by the names in its largest folder, and 40 bytes for each MiB of it. On failure nothing is left and
/// what was at the image's path is still there. Throws PlatformError or ImageError.
void createImage(const CreateCommand &command);

} // namespace stowlark
