#pragma once

#include "window/content_view.h"

#include <QQmlApplicationEngine>
#include <QQuickWindow>

namespace stowlark {

/// Opens the window that draws `view`, which must outlive the engine. The engine owns the window; null if it
/// could not be made.
QQuickWindow *openMainWindow(QQmlApplicationEngine &engine, ContentView &view);

} // namespace stowlark
