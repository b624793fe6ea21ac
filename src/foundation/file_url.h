#pragma once

#include "foundation/path_name.h"

#include <QUrl>

namespace stowlark {

/// The path of a file URL, byte for byte, also where its bytes are no UTF-8; without slashes at its end.
Path path(const QUrl &fileUrl);

/// The file URL of an absolute path; `path()` gives the same bytes back.
QUrl fileUrl(const Path &path);

/// A file URL of this machine whose path is absolute and holds no NUL.
bool isFileUrl(const QUrl &url);

/// The folder for temporary files: `TMPDIR` if that is absolute, else the system's. It may not exist.
Path temporaryDirectory();

} // namespace stowlark
