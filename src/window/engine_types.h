#pragma once

#include "archive/archive_manager.h"
#include "update/update_checker.h"

#include <QtQml/qqml.h>

/// Types of rooms that know no QML, named for it here.
namespace stowlark {

struct ArchiveManagerForQml {
    Q_GADGET
    QML_FOREIGN(stowlark::ArchiveManager)
    QML_NAMED_ELEMENT(ArchiveManager)
    QML_UNCREATABLE("The window owns it")
};

struct UpdateCheckerForQml {
    Q_GADGET
    QML_FOREIGN(stowlark::UpdateChecker)
    QML_NAMED_ELEMENT(UpdateChecker)
    QML_UNCREATABLE("The application owns it")
};

struct AppReleaseForQml {
    Q_GADGET
    QML_FOREIGN(stowlark::AppRelease)
    QML_VALUE_TYPE(appRelease)
};

} // namespace stowlark
