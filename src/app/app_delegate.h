#pragma once

#include "app/service_handler.h"
#include "foundation/path_name.h"
#include "update/update_checker.h"

namespace stowlark {

/// Receives what the desktop tells the application.
class AppDelegate : public QObject {
    Q_OBJECT

public:
    /// From then on, files that the system asks the application to open with an event (QFileOpenEvent) are
    /// opened.
    AppDelegate(UpdateChecker &updater, const HandOver &handOver);

    ServiceHandler &serviceHandler() { return serviceHandler_; }

    /// Lets the silent check for updates begin in 2 seconds.
    void applicationDidFinishLaunching();

    /// Hands a file over 0.2 seconds later; true at once, whatever it is. Of several files the last
    /// one stays.
    bool applicationOpenFile(const Path &file);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    UpdateChecker &updater_;
    HandOver handOver_;
    ServiceHandler serviceHandler_;
};

} // namespace stowlark
