#pragma once

#include "window/content_view.h"

#include <QQmlEngine>
#include <QQuickWindow>

#include <memory>

namespace stowlark {

/// Opens the window that draws `view`; the window must not outlive them. Null if it could not be made, which
/// is then logged.
std::unique_ptr<QQuickWindow> openMainWindow(QQmlEngine &engine, ContentView &view);

} // namespace stowlark
