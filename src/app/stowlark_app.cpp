#include "app/stowlark_app.h"

#include "window/symbol_provider.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <QQmlComponent>
#include <QThreadPool>

/// Generated with the window's QML module.
void qml_register_types_Stowlark_Window();

namespace stowlark {

StowlarkApp::StowlarkApp(Desktop desktop)
    : view_(std::move(desktop)) {
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QObject::connect(qGuiApp, &QGuiApplication::lastWindowClosed, &view_, [this] { quitWhenDone(); });

    // Reading the system's fonts takes about as long as loading the types, which another thread does.
    QThreadPool::globalInstance()->start([] { QFontDatabase::families(); });

    qml_register_types_Stowlark_Window();
    engine_.addImageProvider(QStringLiteral("symbol"), new SymbolProvider); // which the engine owns
    // Not a QQmlApplicationEngine: that looks for a variant of every file.
    QQmlComponent component(&engine_, QUrl(QStringLiteral("qrc:/qt/qml/Stowlark/Window/MainWindow.qml")));
    window_.reset(
        component.createWithInitialProperties({{QStringLiteral("view"), QVariant::fromValue(&view_)}}));
    if (component.isError()) {
        qWarning() << component.errors();
    }
}

QQuickWindow *StowlarkApp::window() const {
    return qobject_cast<QQuickWindow *>(window_.get());
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
