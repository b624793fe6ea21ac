#pragma once

#include <QCoro/QCoroTask>

#include <QList>
#include <QUrl>

#include <optional>

/// Modal panels to choose existing items. Each begins in the folder, or in the home folder if
/// it does not exist, and ends with nothing when the user cancels.
namespace stowlark {

/// Files and folders at once, any number. One source per system.
QCoro::Task<QList<QUrl>> chooseFilesAndFolders(QUrl begin);

/// One file: archives first, any other too.
QCoro::Task<std::optional<QUrl>> chooseArchive(QUrl begin);

QCoro::Task<std::optional<QUrl>> chooseFolder(QUrl begin);

} // namespace stowlark
