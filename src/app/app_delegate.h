#pragma once

#include "app/service_handler.h"
#include "foundation/path_name.h"
#include "update/update_checker.h"

namespace stowlark {

/// Receives what the desktop tells the application.
class AppDelegate : public QObject {
    Q_OBJECT

public:
    /// `activate` brings the window to the front. From then on, files that the system asks the application to
    /// open with an event (QFileOpenEvent) are opened.
    AppDelegate(AppState &appState, UpdateChecker &updater, const std::function<void()> &activate);

    ServiceHandler &serviceHandler() { return serviceHandler_; }

    /// Lets the silent check for updates begin in 2 seconds, and the system's services reach the handler.
    void applicationDidFinishLaunching();

    /// Hands a file to the window 0.2 seconds later; true at once, whatever it is. Of several files the last
    /// one stays.
    bool applicationOpenFile(const Path &file);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    AppState &appState_;
    UpdateChecker &updater_;
    std::function<void()> activate_;
    ServiceHandler serviceHandler_;
};

} // namespace stowlark
