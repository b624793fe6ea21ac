#pragma once

#include <QCoro/QCoroTask>

#include <QList>
#include <QUrl>

#include <optional>

/// Modal panels to choose existing items. Each ends with nothing when the user cancels.
namespace stowlark {

/// Files and folders at once, any number. One source per system.
QCoro::Task<QList<QUrl>> chooseFilesAndFolders();

/// One file: archives first, any other too.
QCoro::Task<std::optional<QUrl>> chooseArchive();

QCoro::Task<std::optional<QUrl>> chooseFolder();

} // namespace stowlark
