#include "window/main_window.h"

#include "window/symbol_provider.h"

#include <QQmlComponent>

/// Generated with the window's QML module.
void qml_register_types_Stowlark_Window();

namespace stowlark {

std::unique_ptr<QQuickWindow> openMainWindow(QQmlEngine &engine, ContentView &view) {
    qml_register_types_Stowlark_Window();
    engine.addImageProvider(QStringLiteral("symbol"), new SymbolProvider); // which the engine owns
    // Not a QQmlApplicationEngine: that looks for a variant of every file.
    QQmlComponent component(&engine, QUrl(QStringLiteral("qrc:/qt/qml/Stowlark/Window/MainWindow.qml")));
    if (component.isError()) {
        qWarning() << component.errors();
        return nullptr;
    }
    std::unique_ptr<QObject> window(
        component.createWithInitialProperties({{QStringLiteral("view"), QVariant::fromValue(&view)}}));
    return std::unique_ptr<QQuickWindow>(qobject_cast<QQuickWindow *>(window.release()));
}

} // namespace stowlark
