#include "app/stowlark_app.h"

#include "window/main_window.h"

#include <QAccessible>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QThreadPool>

namespace stowlark {

StowlarkApp::StowlarkApp(Desktop desktop, UpdateChecker &updater)
    : view_(std::move(desktop), {}, AppState::shared(), updater) {
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QObject::connect(qGuiApp, &QGuiApplication::lastWindowClosed, &view_, [this] { quitWhenDone(); });
    // What Qt Quick 6.4 tells screen readers of a picker that it deletes crashes.
    QObject::connect(qGuiApp, &QGuiApplication::aboutToQuit, &view_,
                     [] { QAccessible::installUpdateHandler([](QAccessibleEvent *) {}); });

    // Reading the system's fonts takes about as long as loading the types, which another thread does.
    QThreadPool::globalInstance()->start([] { QFontDatabase::families(); });
    window_ = openMainWindow(engine_, view_);
}

void StowlarkApp::quitWhenDone() {
    if (!view_.mgr()->isCreating()) {
        QCoreApplication::quit();
        return;
    }
    QObject::connect(
        view_.mgr(), &ArchiveManager::isCreatingChanged, &view_, [this] { quitWhenDone(); },
        Qt::SingleShotConnection);
}

} // namespace stowlark
