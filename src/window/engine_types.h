#pragma once

#include "archive/archive_manager.h"

#include <QtQml/qqml.h>

/// Types of rooms that know no QML, named for it here.
namespace stowlark {

struct ArchiveManagerForQml {
    Q_GADGET
    QML_FOREIGN(stowlark::ArchiveManager)
    QML_NAMED_ELEMENT(ArchiveManager)
    QML_UNCREATABLE("The window owns it")
};

} // namespace stowlark
