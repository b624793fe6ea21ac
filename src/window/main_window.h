#pragma once

#include "window/content_view.h"

#include <QQmlEngine>
#include <QQuickWindow>

#include <memory>

namespace stowlark {

/// The QML file of the window itself.
inline QUrl mainWindowScene() {
    return QUrl(QStringLiteral("qrc:/qt/qml/Stowlark/Window/MainWindow.qml"));
}

/// Opens the window that draws `view`; the window must not outlive them. `scene` is a QML file with a
/// MainWindow, `properties` what that takes besides. Null if it could not be made, which is then logged.
std::unique_ptr<QQuickWindow> openMainWindow(QQmlEngine &engine, ContentView &view,
                                             const QUrl &scene = mainWindowScene(),
                                             QVariantMap properties = {});

} // namespace stowlark
