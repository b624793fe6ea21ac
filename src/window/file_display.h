#pragma once

#include "foundation/path_name.h"

#include <QString>

#include <optional>

/// What rows show of a file: plain look-ups, nothing cached.
namespace stowlark {

/// Also a link to one.
bool isFolder(const Path &file);

/// The size in bytes that the item's own attributes report (a folder is not walked); none if they cannot be
/// read.
std::optional<qint64> attributeSize(const Path &file);

/// The size as text; none for a folder or what cannot be read.
std::optional<QString> fileSize(const Path &file);

/// The symbols that stand for a file: in a row of the list, and for the archive to extract. They go by the
/// last extension alone.
QString smartIcon(const Path &file);
QString archiveIcon(const Path &file);

} // namespace stowlark
