#include "app/appearance.h"
#include "app/other_programs.h"
#include "desktop/symbol_images.h"
#include "foundation/application_id.h"
#include "foundation/bundle_version.h"

#include <QApplication>
#include <QIcon>
#include <QQuickStyle>

#include <algorithm>
#include <csignal>
#include <span>
#include <string_view>

namespace {

/// Such a question is answered without a display.
bool isQuestion(std::string_view argument) {
    return argument == "--help" || argument == "-h" || argument == "--version" || argument == "-v";
}

} // namespace

int main(int argc, char **argv) {
    using namespace stowlark;
    // A parent may have had them ignored, which is inherited; then the end of a tool could not be waited for.
    std::signal(SIGCHLD, SIG_DFL); // NOLINT(cert-err33-c)
    QCoreApplication::setApplicationName(QStringLiteral("Stowlark"));
    QCoreApplication::setApplicationVersion(bundleVersion());
    const auto arguments = [&] { // QApplication takes its own away
        return std::span(argv, static_cast<size_t>(argc)).subspan(1);
    };
    const auto isEnd = [](std::string_view argument) { return argument == "--"; };
    if (std::any_of(arguments().begin(), std::ranges::find_if(arguments(), isEnd), isQuestion)) {
        const QCoreApplication application(argc, argv);
        invocation(arguments());
    }
    const QApplication application(argc, argv);
    QGuiApplication::setDesktopFileName(applicationId());
    const Invocation asked = invocation(arguments());
    OtherPrograms others;
    if (others.handOver(asked)) {
        return EXIT_SUCCESS;
    }

#ifndef Q_OS_MACOS // which takes the bundle's
    QIcon icon;
    for (const int side : {16, 32, 64, 256}) {
        icon.addPixmap(
            QPixmap::fromImage(drawnImage(QStringLiteral(":/qt/qml/Stowlark/Window/AppIcon.svg"), side)));
    }
    QGuiApplication::setWindowIcon(icon);
#endif
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
