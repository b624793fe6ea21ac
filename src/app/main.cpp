#include "app/appearance.h"
#include "app/stowlark_app.h"
#include "foundation/bundle_version.h"

#include <QApplication>
#include <QIcon>
#include <QQuickStyle>

#include <csignal>

int main(int argc, char *argv[]) {
    // A parent may have had them ignored, which is inherited; then the end of a tool could not be waited for.
    std::signal(SIGCHLD, SIG_DFL); // NOLINT(cert-err33-c)
    const QApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Stowlark"));
    QCoreApplication::setApplicationVersion(stowlark::bundleVersion());
    QGuiApplication::setDesktopFileName(QStringLiteral("stowlark"));
    QGuiApplication::setWindowIcon(QIcon(QStringLiteral(":/qt/qml/Stowlark/Window/AppIcon.svg")));
    QQuickStyle::setStyle(QStringLiteral("Basic"));
    stowlark::applyAppearance();
    stowlark::StowlarkApp program;
    return program.window() == nullptr ? EXIT_FAILURE : QApplication::exec();
}
