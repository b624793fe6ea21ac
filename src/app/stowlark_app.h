#pragma once

#include "app/app_delegate.h"
#include "app/invocation.h"
#include "app/menu_commands.h"
#include "app/quitting.h"
#include "desktop/desktop.h"
#include "window/content_view.h"

#include <QQmlEngine>
#include <QQuickWindow>

#include <memory>

namespace stowlark {

/// The program put together: one window with its state, and the menus. Made after the QApplication.
class StowlarkApp {
public:
    explicit StowlarkApp(const Desktop &desktop = systemDesktop(),
                         UpdateChecker &updater = sharedUpdateChecker());

    AppDelegate &appDelegate() { return appDelegate_; }
    MenuCommands &commands() { return commands_; }
    ContentView &view() { return view_; }
    /// Null if the window could not be made.
    QQuickWindow *window() const { return window_.get(); }

    /// Does what was asked, as far as it makes sense; the rest is ignored.
    void take(const Invocation &invocation);
    /// Brings the window in front of all others.
    void activate() const;

private:
    void open(const QStringList &uris);

    ContentView view_;
    AppDelegate appDelegate_;
    MenuCommands commands_;
    Quitting quitting_;
    QQmlEngine engine_; ///< after, and so gone before, what its window shows
    std::unique_ptr<QQuickWindow> window_;
};

} // namespace stowlark
