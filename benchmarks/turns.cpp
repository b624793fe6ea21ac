#include "turns.h"

#include "archive/archive_manager.h"
#include "failure.h"
#include "foundation/file_url.h"
#include "inputs.h"
#include "interruption.h"
#include "measure.h"

#include <QCoro/QCoroTask>

#include <QElapsedTimer>
#include <QTimer>

#include <algorithm>
#include <cstdio>

namespace stowlark {
namespace {

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

} // namespace

void measureTurns(const Path &folder) {
    constexpr double limit = 50;
    const Path tree = folder / "tiny files";
    makeTinyFiles(tree);
    failIfInterrupted();

    // A tool that does nothing leaves the staging and its removal.
    ArchiveManager manager({.zip = "/usr/bin/true"});
    LongestGap gap;
    QCoro::waitFor(manager.createArchive({fileUrl(tree)}, ArchiveFormat::zip, CompressionLevel::normal,
                                         fileUrl(folder / "created.zip")));
    gap.turn();
    if (manager.statusIsError()) {
        throw Failure(manager.statusMessage());
    }
    std::printf("Longest gap between turns of the event loop, 100,000 files: %.1f ms, limit %.0f ms  %s\n",
                gap.milliseconds(), limit, verdict(gap.milliseconds(), limit));
}

} // namespace stowlark
