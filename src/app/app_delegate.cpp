#include "app/app_delegate.h"

#include "foundation/file_url.h"

#include <QCoreApplication>
#include <QFileOpenEvent>
#include <QTimer>

namespace stowlark {

using namespace std::chrono_literals;

namespace {

template <typename Action>
void after(std::chrono::milliseconds delay, QObject *receiver, Action action) {
    auto *timer = new QTimer(receiver);
    timer->setSingleShot(true);
    timer->setTimerType(Qt::PreciseTimer);
    QObject::connect(timer, &QTimer::timeout, receiver, action);
    QObject::connect(timer, &QTimer::timeout, timer, &QObject::deleteLater);
    timer->start(delay);
}

} // namespace

AppDelegate::AppDelegate(UpdateChecker &updater, const HandOver &handOver)
    : updater_(updater)
    , handOver_(handOver)
    , serviceHandler_(handOver) {
    QCoreApplication::instance()->installEventFilter(this);
}

void AppDelegate::applicationDidFinishLaunching() {
    after(2s, this, [this] { updater_.checkForUpdates(); });
}

bool AppDelegate::applicationOpenFile(const Path &file) {
    after(200ms, this, [this, url = fileUrl(file)] { handOver_(url); });
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
