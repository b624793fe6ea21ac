#include "app/app_delegate.h"

#include "foundation/file_url.h"

#include <QCoreApplication>
#include <QFileOpenEvent>
#include <QTimer>

namespace stowlark {

using namespace std::chrono_literals;

AppDelegate::AppDelegate(UpdateChecker &updater, const HandOver &handOver)
    : updater_(updater)
    , handOver_(handOver)
    , serviceHandler_(handOver) {
    QCoreApplication::instance()->installEventFilter(this);
}

void AppDelegate::applicationDidFinishLaunching() {
    QTimer::singleShot(2s, Qt::PreciseTimer, this, [this] { updater_.checkForUpdates(); });
}

bool AppDelegate::applicationOpenFile(const Path &file) {
    QTimer::singleShot(200ms, Qt::PreciseTimer, this, [this, url = fileUrl(file)] { handOver_(url); });
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
