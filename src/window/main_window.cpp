#include "window/main_window.h"

#include "desktop/title_bar.h"
#include "window/symbol_provider.h"

#include <QQmlComponent>

/// Generated with the window's QML module.
void qml_register_types_Stowlark_Window();

namespace stowlark {

std::unique_ptr<QQuickWindow> openMainWindow(QQmlEngine &engine, ContentView &view, const QUrl &scene,
                                             QVariantMap properties) {
    qml_register_types_Stowlark_Window();
    engine.addImageProvider(QStringLiteral("symbol"), new SymbolProvider); // which the engine owns
    engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    // Not a QQmlApplicationEngine: that looks for a variant of every file.
    QQmlComponent component(&engine, scene);
    if (component.isError()) {
        qWarning() << component.errors();
        return nullptr;
    }
    properties.insert(QStringLiteral("view"), QVariant::fromValue(&view));
    std::unique_ptr<QObject> root(component.createWithInitialProperties(properties));
    std::unique_ptr<QQuickWindow> window(qobject_cast<QQuickWindow *>(root.release()));
    if (window != nullptr) {
        const auto extend = [shown = window.get()] {
            if (!shown->windowStates().testFlag(Qt::WindowFullScreen)) {
                shown->setProperty("titleBarHeight", extendUnderTitleBar(*shown));
            }
        };
        extend();
        // Qt gives the window another style when it leaves full screen.
        QObject::connect(window.get(), &QWindow::windowStateChanged, window.get(), extend,
                         Qt::QueuedConnection);
    }
    return window;
}

} // namespace stowlark
