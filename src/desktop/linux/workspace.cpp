#include "desktop/workspace.h"

#include "foundation/file_url.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDesktopServices>

namespace stowlark {
namespace {

void openContainingFolder(const QUrl &item) {
    QDesktopServices::openUrl(fileUrl(parentFolder(path(item))));
}

} // namespace

void reveal(const QUrl &item) {
    if (!QDBusConnection::sessionBus().isConnected()) {
        openContainingFolder(item);
        return;
    }
    auto call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    call << QStringList{QString::fromLatin1(item.toEncoded())} << QString();
    auto *watcher = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call));
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher, [watcher, item] {
        watcher->deleteLater();
        if (watcher->isError() && watcher->error().type() != QDBusError::NoReply) { // it may only be slow
            openContainingFolder(item);
        }
    });
}

} // namespace stowlark
