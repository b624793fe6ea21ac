#include "window/main_window.h"

#include "window/symbol_provider.h"

/// Generated with the window's QML module.
void qml_register_types_Stowlark_Window();

namespace stowlark {

QQuickWindow *openMainWindow(QQmlApplicationEngine &engine, ContentView &view) {
    qml_register_types_Stowlark_Window();
    engine.addImageProvider(QStringLiteral("symbol"), new SymbolProvider); // which the engine owns
    engine.setInitialProperties({{QStringLiteral("view"), QVariant::fromValue(&view)}});
    engine.load(QUrl(QStringLiteral("qrc:/qt/qml/Stowlark/Window/MainWindow.qml")));
    return engine.rootObjects().isEmpty() ? nullptr
                                          : qobject_cast<QQuickWindow *>(engine.rootObjects().first());
}

} // namespace stowlark
