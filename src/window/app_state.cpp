#include "window/app_state.h"

namespace stowlark {

AppState &AppState::shared() {
    static AppState state;
    return state;
}

void AppState::setIncomingFile(const QUrl &file) {
    incomingFile_ = file;
    Q_EMIT incomingFileChanged();
}

void AppState::setShowAbout(bool show) {
    if (show) {
        setShowHelp(false);
    }
    showAbout_ = show;
    Q_EMIT showAboutChanged();
}

void AppState::setShowHelp(bool show) {
    if (show) {
        setShowAbout(false);
    }
    showHelp_ = show;
    Q_EMIT showHelpChanged();
}

} // namespace stowlark
