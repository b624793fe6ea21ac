#pragma once

#include <QCoro/QCoroTask>

#include <QList>
#include <QUrl>

#include <optional>

/// Modal panels to choose existing items. Each begins in the folder; if that does not exist, where the system
/// has it begin. Each ends with nothing when the user cancels. One source per system.
namespace stowlark {

/// Files and folders at once, any number.
QCoro::Task<QList<QUrl>> chooseFilesAndFolders(QUrl begin);

/// One file: archives first, any other too.
QCoro::Task<std::optional<QUrl>> chooseArchive(QUrl begin);

QCoro::Task<std::optional<QUrl>> chooseFolder(QUrl begin);

} // namespace stowlark
