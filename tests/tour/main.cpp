// Drives the real window through the main job: stowlark_tour SCREENSHOT_FOLDER

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
    if (argc != 2) {
        qCritical("usage: stowlark_tour SCREENSHOT_FOLDER");
        return 2;
    }
    QCoreApplication::setApplicationName(QStringLiteral("Stowlark"));
    QQuickStyle::setStyle(QStringLiteral("Basic"));
    applyAppearance();
    const Identity identity;
    Server server(identity.server);
    const Desktop desktop = systemDesktop();
    UpdateChecker updater({.showAlert = desktop.showAlert,
                           .openURL = [](const QUrl &) {}, // no browser here
                           .feed = {.url = server.url(), .tls = identity.client}});
    StowlarkApp program(desktop, updater);
    if (program.window() == nullptr) {
        return 1;
    }
    try {
        Tour(program, updater, server, folder, argv[1]).run();
        return 0;
    } catch (const std::exception &failure) {
        QTextStream(stderr) << "The tour failed: " << QString::fromUtf8(failure.what()) << Qt::endl;
        return 1;
    }
}
