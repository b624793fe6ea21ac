#include "app/stowlark_app.h"

#include "window/symbol_provider.h"

#include <QAccessible>
#include <QGuiApplication>

/// Generated with the window's QML module.
void qml_register_types_Stowlark_Window();

namespace stowlark {

StowlarkApp::StowlarkApp(Desktop desktop)
    : view_(std::move(desktop)) {
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QObject::connect(qGuiApp, &QGuiApplication::lastWindowClosed, &view_, [this] { quitWhenDone(); });
    // What Qt Quick 6.4 tells screen readers of a picker that it deletes crashes.
    QObject::connect(qGuiApp, &QGuiApplication::aboutToQuit, &view_,
                     [] { QAccessible::installUpdateHandler([](QAccessibleEvent *) {}); });

    qml_register_types_Stowlark_Window();
    engine_.addImageProvider(QStringLiteral("symbol"), new SymbolProvider); // which the engine owns
    engine_.setInitialProperties({{QStringLiteral("view"), QVariant::fromValue(&view_)}});
    engine_.load(QUrl(QStringLiteral("qrc:/qt/qml/Stowlark/Window/MainWindow.qml")));
}

QQuickWindow *StowlarkApp::window() const {
    return engine_.rootObjects().isEmpty() ? nullptr
                                           : qobject_cast<QQuickWindow *>(engine_.rootObjects().first());
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
