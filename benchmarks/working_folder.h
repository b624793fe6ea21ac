#pragma once

#include "foundation/path_name.h"

#include <QTemporaryDir>

namespace stowlark {

/// Where to measure: in memory if there is room for it, else in the system's folder for temporary files.
QString roomyParent();

/// A new folder in `parent` of this run's own, removed at its end. The folder for temporary files is in it,
/// for this program and its children.
class WorkingFolder {
public:
    explicit WorkingFolder(const QString &parent);

    Path path() const;
    /// As the system calls it.
    QString fileSystemType() const;

private:
    QTemporaryDir folder_;
};

} // namespace stowlark
