#pragma once

#include <QTemporaryDir>

#include "foundation/path_name.h"

namespace stowlark {

/// A folder of this run's own, removed at its end. The folder for temporary files is in it, for this program
/// and its children.
class WorkingFolder {
public:
    /// `parent`: where to make it; empty for memory where that has room, else the system's temporary folder.
    explicit WorkingFolder(const QString &parent);

    Path path() const;
    /// As the system calls it.
    QString fileSystemType() const;

private:
    QTemporaryDir folder_;
};

} // namespace stowlark
