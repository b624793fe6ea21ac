#pragma once

#include "diskimage/command_line.h"

namespace stowlark {

/// Makes a disk image whose volume holds what the source folder holds. Memory does not grow with the input,
/// only with the number of entries of its largest folder. On failure nothing is left and what was at the
/// image's path is still there. Throws PlatformError or ImageError.
void createImage(const CreateCommand &command);

} // namespace stowlark
