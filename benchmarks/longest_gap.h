#pragma once

#include <QElapsedTimer>
#include <QTimer>

#include <algorithm>

namespace stowlark {

/// The longest time between two turns of the event loop.
class LongestGap {
public:
    LongestGap() {
        QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { turn(); });
        timer_.setTimerType(Qt::PreciseTimer);
        timer_.start(5);
        sinceTurn_.start();
    }

    void turn() {
        longest_ = std::max(longest_, sinceTurn_.nsecsElapsed());
        sinceTurn_.start();
    }

    double milliseconds() const { return static_cast<double>(longest_) / 1e6; }

private:
    QTimer timer_;
    QElapsedTimer sinceTurn_;
    qint64 longest_ = 0;
};

} // namespace stowlark
