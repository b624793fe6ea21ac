#include "app/app_delegate.h"

#include "foundation/file_url.h"

#include <QCoreApplication>
#include <QFileOpenEvent>
#include <QTimer>

namespace stowlark {

using namespace std::chrono_literals;

AppDelegate::AppDelegate(AppState &appState, UpdateChecker &updater, const std::function<void()> &activate)
    : appState_(appState)
    , updater_(updater)
    , activate_(activate)
    , serviceHandler_(appState, activate) {
    QCoreApplication::instance()->installEventFilter(this);
}

void AppDelegate::applicationDidFinishLaunching() {
    QTimer::singleShot(2s, this, [this] { updater_.checkForUpdates(); });
}

bool AppDelegate::applicationOpenFile(const Path &file) {
    QTimer::singleShot(200ms, this, [this, url = fileUrl(file)] {
        activate_();
        appState_.setIncomingFile(url);
    });
    return true;
}

bool AppDelegate::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() == QEvent::FileOpen) {
        const QUrl url = static_cast<QFileOpenEvent *>(event)->url(); // NOLINT(*-static-cast-downcast)
        return isFileUrl(url) && applicationOpenFile(path(url));
    }
    return QObject::eventFilter(watched, event);
}

} // namespace stowlark
