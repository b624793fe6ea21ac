#include "app/appearance.h"
#include "app/other_programs.h"
#include "foundation/application_id.h"
#include "foundation/bundle_version.h"

#include <QApplication>
#include <QIcon>
#include <QQuickStyle>

#include <csignal>

int main(int argc, char *argv[]) {
    using namespace stowlark;
    // A parent may have had them ignored, which is inherited; then the end of a tool could not be waited for.
    std::signal(SIGCHLD, SIG_DFL); // NOLINT(cert-err33-c)
    const QApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Stowlark"));
    QCoreApplication::setApplicationVersion(bundleVersion());
    QGuiApplication::setDesktopFileName(applicationId());
    const Invocation asked = invocation(std::span(argv, static_cast<size_t>(argc)).subspan(1));
    OtherPrograms others;
    if (others.handOver(asked)) {
        return EXIT_SUCCESS;
    }

    QGuiApplication::setWindowIcon(QIcon(QStringLiteral(":/qt/qml/Stowlark/Window/AppIcon.svg")));
    QQuickStyle::setStyle(QStringLiteral("Basic"));
    applyAppearance();
    StowlarkApp program;
    if (program.window() == nullptr) {
        return EXIT_FAILURE;
    }
    others.serve(program);
    program.appDelegate().applicationDidFinishLaunching();
    if (asked.kind != Invocation::Kind::activate) {
        program.take(asked);
    }
    return QApplication::exec();
}
