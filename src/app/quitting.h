#pragma once

#include "archive/archive_manager.h"

#include <QtQml/qqml.h>

#include <functional>

namespace stowlark {

/// Lets the application quit only between operations, whoever asks it to.
class Quitting : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the application")
    Q_PROPERTY(bool isPending READ isPending NOTIFY isPendingChanged)

public:
    /// `quit` is what it does then.
    Quitting(ArchiveManager &mgr, std::function<void()> quit);

    /// It quits once the running operation has succeeded. If that fails it stays, so that the user sees why.
    bool isPending() const { return isPending_; }

    /// Whether the application may quit at once; if not, it is pending from then on.
    Q_INVOKABLE bool request();
    Q_INVOKABLE void cancel() { setPending(false); }

Q_SIGNALS:
    void isPendingChanged();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void setPending(bool pending);
    void takeProgress();

    ArchiveManager &mgr_;
    std::function<void()> quit_;
    bool isPending_ = false;
};

} // namespace stowlark
