#include "started_program.h"

#include "failure.h"
#include "interruption.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QThread>

namespace stowlark {
namespace {

constexpr int patience = 30'000; // in ms
constexpr int turn = 100;        // in ms: how long an interruption may go unnoticed

QProcessEnvironment environment(const QString &renderer, const Path &home) {
    QProcessEnvironment result = QProcessEnvironment::systemEnvironment();
    const QString folder = QFile::decodeName(home.c_str());
    result.insert(QStringLiteral("HOME"), folder);
    for (const char *variable : {"XDG_CACHE_HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME"}) {
        result.insert(QLatin1String(variable), folder + u'/' + QLatin1String(variable));
    }
    result.insert(QStringLiteral("QT_QUICK_BACKEND"), renderer);
    // Qt's own line for each frame: nothing in the program has to tell.
    result.insert(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("qt.scenegraph.time.renderloop=true"));
    result.insert(QStringLiteral("QT_FORCE_STDERR_LOGGING"), QStringLiteral("1"));
    return result;
}

} // namespace

StartedProgram::StartedProgram(const QString &name, const QString &renderer, const Path &home) {
    process_.setProcessChannelMode(QProcess::MergedChannels);
    process_.setProcessEnvironment(environment(renderer, home));
    process_.setStandardInputFile(QProcess::nullDevice());
    process_.start(QCoreApplication::applicationDirPath() + u'/' + name, QStringList());
}

StartedProgram::~StartedProgram() {
    process_.kill();
    process_.waitForFinished();
}

void StartedProgram::waitForFrame() {
    const QDeadlineTimer deadline(patience);
    QByteArray output;
    while (!output.contains("rame rendered")) {
        failIfInterrupted();
        if (deadline.hasExpired() || process_.state() == QProcess::NotRunning) {
            throw Failure(QStringLiteral("%1 showed no window: %2")
                              .arg(process_.program(), QString::fromLocal8Bit(output)));
        }
        process_.waitForReadyRead(turn);
        output += process_.readAll();
    }
}

double StartedProgram::memoryWhenIdle() const {
    waitForIdleness();
    const QByteArray summary = told("smaps_rollup");
    const qsizetype share = summary.indexOf("\nPss:");
    const QByteArray kilobytes = summary.mid(share + 5, summary.indexOf(" kB", share) - share - 5);
    if (share < 0 || kilobytes.toDouble() == 0) {
        throw Failure(QStringLiteral("The memory of %1 is not known.").arg(process_.program()));
    }
    return kilobytes.toDouble() / 1024;
}

bool StartedProgram::canTellMemory() {
    return QFile::exists(QStringLiteral("/proc/self/smaps_rollup"));
}

void StartedProgram::waitForIdleness() const {
    constexpr int turnsNeeded = 5;
    const QDeadlineTimer deadline(patience);
    qint64 used = -1;
    for (int idle = 0; idle < turnsNeeded; ++idle) {
        failIfInterrupted();
        if (deadline.hasExpired()) {
            throw Failure(QStringLiteral("%1 keeps working.").arg(process_.program()));
        }
        if (const qint64 now = processorTime(); now != used) {
            used = now;
            idle = 0;
        }
        QThread::msleep(turn);
    }
}

QByteArray StartedProgram::told(const char *file) const {
    QFile source(QStringLiteral("/proc/%1/%2").arg(process_.processId()).arg(QLatin1String(file)));
    return source.open(QIODevice::ReadOnly) ? source.readAll() : QByteArray();
}

/// In ticks. The fields after the name, which is in parentheses, are divided by spaces.
qint64 StartedProgram::processorTime() const {
    const QByteArray status = told("stat");
    const QList<QByteArray> fields = status.mid(status.lastIndexOf(')') + 2).split(' ');
    return fields.value(11).toLongLong() + fields.value(12).toLongLong();
}

} // namespace stowlark
