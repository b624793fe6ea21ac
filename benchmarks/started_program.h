#pragma once

#include "foundation/path_name.h"

#include <QProcess>

namespace stowlark {

/// A program with a Qt Quick window, run with settings and caches of its own. Throws Failure where it does
/// not do in time what is waited for.
class StartedProgram {
public:
    /// Runs what lies in this program's folder under that name. `renderer` is a Qt Quick back end, empty for
    /// the one that Qt chooses; `home` is kept from one run to the next.
    StartedProgram(const QString &name, const QString &renderer, const Path &home);
    ~StartedProgram();
    StartedProgram(const StartedProgram &) = delete;
    StartedProgram &operator=(const StartedProgram &) = delete;

    void waitForFrame();

    /// Its proportional share of what lies in memory, in MB, once it uses no time of the processor any more.
    double memoryWhenIdle() const;
    static bool canTellMemory();

private:
    void waitForIdleness() const;
    QByteArray told(const char *file) const;
    qint64 processorTime() const;

    QProcess process_;
};

} // namespace stowlark
