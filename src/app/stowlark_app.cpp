#include "app/stowlark_app.h"

#include "window/main_window.h"

#include <QGuiApplication>

namespace stowlark {

StowlarkApp::StowlarkApp(Desktop desktop)
    : view_(std::move(desktop)) {
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QObject::connect(qGuiApp, &QGuiApplication::lastWindowClosed, &view_, [this] { quitWhenDone(); });

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
