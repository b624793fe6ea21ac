#pragma once

#include "foundation/path_name.h"

#include <QString>

#include <optional>

/// What the window shows of a file.
namespace stowlark {

/// What the file system says of an item.
struct FileAttributes {
    bool isFolder = false;      ///< also a link to one
    std::optional<qint64> size; ///< in bytes, its own (a folder is not walked); none if it could not be read
};

FileAttributes fileAttributes(const Path &file);

/// The size as text; none for a folder or what could not be read.
std::optional<QString> fileSize(const FileAttributes &attributes);

/// The symbols that stand for a file: in a row of the list, and for the archive to extract. They go by the
/// last extension alone.
QString smartIcon(const Path &file);
QString archiveIcon(const Path &file);

} // namespace stowlark
