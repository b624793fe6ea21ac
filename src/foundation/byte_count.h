#pragma once

#include <QString>

namespace stowlark {

/// A size as a file manager shows it: decimal units, no decimals up to KB, one for MB, two from GB on,
/// trailing zeros dropped. "Zero KB", "1 byte", "999 bytes", "21 KB", "1.2 MB", "1.23 GB".
QString byteCountText(qint64 bytes);

} // namespace stowlark
