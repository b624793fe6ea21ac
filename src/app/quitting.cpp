#include "app/quitting.h"

#include <QCoreApplication>
#include <QEvent>

namespace stowlark {

Quitting::Quitting(ArchiveManager &mgr, std::function<void()> quit)
    : mgr_(mgr)
    , quit_(std::move(quit)) {
    connect(&mgr_, &ArchiveManager::isCreatingChanged, this, &Quitting::takeProgress);
    QCoreApplication::instance()->installEventFilter(this);
}

bool Quitting::request() {
    setPending(mgr_.isCreating());
    return !isPending_;
}

bool Quitting::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() == QEvent::Quit && !request()) {
        event->ignore();
        return true;
    }
    return QObject::eventFilter(watched, event);
}

void Quitting::takeProgress() {
    if (isPending_ && !mgr_.isCreating()) {
        setPending(false);
        if (!mgr_.statusIsError()) {
            quit_();
        }
    }
}

void Quitting::setPending(bool pending) {
    if (pending != isPending_) {
        isPending_ = pending;
        Q_EMIT isPendingChanged();
    }
}

} // namespace stowlark
