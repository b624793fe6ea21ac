#pragma once

#include "foundation/descriptor.h"

#include <QByteArray>

namespace stowlark {

/// A new file in the temporary folder, open for reading and writing, that has no name: it is gone when it is
/// closed. `flags`: O_APPEND or none. Throws PlatformError.
Descriptor unlinkedTemporaryFile(int flags = 0);

/// All that an open file holds, wherever its position is; cut short where it cannot be read.
QByteArray wholeContents(int file);

/// The same, of a text that may be huge: of more than 6 MB the first and the last 3, with "…" on a line
/// between them. No character of UTF-8 is cut.
QByteArray shownContents(int file);

} // namespace stowlark
