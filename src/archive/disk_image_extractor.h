#pragma once

#include "archive/tools.h"

#include <QCoro/QCoroTask>

namespace stowlark {

/// Mounts the disk image `archive` in the temporary folder, copies the visible items of its volume into the
/// empty folder `outputDir`, and takes the mount away again. Throws what `shell` and `copyItem` throw. What
/// was copied before a failure stays; an image that cannot be mounted leaves its empty mount point.
QCoro::Task<> runDMGExtract(Tools tools, Path archive, Path outputDir);

} // namespace stowlark
