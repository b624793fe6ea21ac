#include "desktop/desktop.h"

#include "desktop/alert.h"
#include "desktop/open_panel.h"
#include "desktop/workspace.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QDir>
#include <QGuiApplication>
#include <QStandardPaths>

namespace stowlark {

Desktop systemDesktop() {
    return {.chooseFilesAndFolders = &chooseFilesAndFolders,
            .chooseArchive = &chooseArchive,
            .chooseFolder = &chooseFolder,
            .reveal = &reveal,
            .openURL = [](const QUrl &page) { QDesktopServices::openUrl(page); },
            .showAlert = &showAlert,
            .copyText = [](const QString &text) { QGuiApplication::clipboard()->setText(text); }};
}

QUrl desktopURL() {
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::DesktopLocation);
    return QUrl::fromLocalFile(!folder.isEmpty() && QDir(folder).exists() ? folder : QDir::homePath());
}

} // namespace stowlark
