#include "turns.h"

#include "archive/archive_manager.h"
#include "failure.h"
#include "foundation/file_url.h"
#include "inputs.h"
#include "interruption.h"
#include "longest_gap.h"
#include "measure.h"

#include <QCoro/QCoroTask>

#include <QCoreApplication>
#include <QProcess>

#include <cstdio>

namespace stowlark {
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

void measureWindowTurns(const Path &folder) {
    std::fflush(stdout);
    const QString program = QCoreApplication::applicationDirPath() + QStringLiteral("/stowlark_window_turns");
    if (QProcess::execute(program, {QString::fromStdString(folder / "tiny files")}) != 0) {
        throw Failure(QStringLiteral("the measurement of the window failed"));
    }
}

} // namespace stowlark
