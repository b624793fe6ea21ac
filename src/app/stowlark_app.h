#pragma once

#include "desktop/desktop.h"
#include "window/content_view.h"

#include <QQmlEngine>
#include <QQuickWindow>

#include <memory>

namespace stowlark {

/// The program put together: one window with its state. Made after the QApplication. Once the window is
/// closed the application quits, after the operation that may still be running.
class StowlarkApp {
public:
    explicit StowlarkApp(Desktop desktop = systemDesktop(), UpdateChecker &updater = sharedUpdateChecker());

    ContentView &view() { return view_; }
    /// Null if the window could not be made.
    QQuickWindow *window() const { return window_.get(); }

private:
    void quitWhenDone();

    ContentView view_;
    QQmlEngine engine_; ///< after, and so gone before, what its window shows
    std::unique_ptr<QQuickWindow> window_;
};

} // namespace stowlark
