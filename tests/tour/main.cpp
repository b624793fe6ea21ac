// Drives the real window through the main job:
//   stowlark_tour [--own-desktop] SCREENSHOT_FOLDER
// With --own-desktop, and always on macOS, without the dialogs and menus of the system.

#include "app/appearance.h"
#include "tour/tour.h"

#include "support/feed_server.h"

#include <QApplication>
#include <QQuickStyle>
#include <QTextStream>

using namespace stowlark;

int main(int argc, char *argv[]) {
    const TestFolder folder;
    qputenv("HOME", QByteArray::fromStdString(folder.path().native()));
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    const QApplication application(argc, argv);
    QStringList arguments = QCoreApplication::arguments().mid(1);
    bool isOwn = arguments.removeAll(QStringLiteral("--own-desktop")) > 0;
#ifdef Q_OS_MACOS
    isOwn = true;
#endif
    if (arguments.size() != 1) {
        qCritical("usage: stowlark_tour [--own-desktop] SCREENSHOT_FOLDER");
        return 2;
    }
    QCoreApplication::setApplicationName(QStringLiteral("Stowlark"));
    QQuickStyle::setStyle(QStringLiteral("Basic"));
    applyAppearance();
    const Identity identity;
    Server server(identity.server);
    OwnDesktop own;
    const Desktop desktop = isOwn ? own.desktop() : systemDesktop();
    UpdateChecker updater({.showAlert = desktop.showAlert,
                           .openURL = [](const QUrl &) {}, // no browser here
                           .feed = {.url = server.url(), .tls = identity.client}});
    StowlarkApp program(desktop, updater);
    if (program.window() == nullptr) {
        return 1;
    }
    try {
        const Path screenshots = arguments.first().toStdString();
        Tour(program, updater, server, folder, isOwn ? &own : nullptr, screenshots).run();
        return 0;
    } catch (const std::exception &failure) {
        QTextStream(stderr) << "The tour failed: " << QString::fromUtf8(failure.what()) << Qt::endl;
        return 1;
    }
}
