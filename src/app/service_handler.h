#pragma once

#include "window/app_state.h"

#include <QStringList>

#include <functional>

namespace stowlark {

/// Answers "Extract with Stowlark" of the file managers' context menus.
class ServiceHandler : public QObject {
    Q_OBJECT

public:
    /// `activate` brings the window to the front.
    ServiceHandler(AppState &appState, std::function<void()> activate);

    /// Hands the first file among the URLs to the window, after it has returned. Whether the file exists and
    /// is an archive shows when the user extracts it. Does nothing if there is no file.
    void extractFiles(const QStringList &urls);

private:
    AppState &appState_;
    std::function<void()> activate_;
};

} // namespace stowlark
