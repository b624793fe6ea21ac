#pragma once

#include "update/alert_style.h"

#include <QCoro/QCoroTask>

#include <QList>
#include <QString>
#include <QUrl>

#include <functional>
#include <optional>

namespace stowlark {

/// What the window asks of the desktop. Choosers begin in a folder, and end with nothing when the user
/// cancels. Their URLs are file URLs.
struct Desktop {
    std::function<QCoro::Task<QList<QUrl>>(QUrl begin)> chooseFilesAndFolders;
    std::function<QCoro::Task<std::optional<QUrl>>(QUrl begin)> chooseArchive;
    std::function<QCoro::Task<std::optional<QUrl>>(QUrl begin)> chooseFolder;
    /// Shows the item, selected, in the file manager.
    std::function<void(const QUrl &)> reveal;
    /// Opens a page in the browser.
    std::function<void(const QUrl &)> openURL;
    /// Shows an alert with the one button "OK"; done when the user has dismissed it.
    std::function<QCoro::Task<>(QString title, QString message, AlertStyle style)> showAlert;
    /// Puts a text on the clipboard.
    std::function<void(const QString &)> copyText;
};

/// The desktop that the program runs on. Needs a QApplication.
Desktop systemDesktop();

/// The user's Desktop folder, or the home folder where there is none.
QUrl desktopURL();

} // namespace stowlark
