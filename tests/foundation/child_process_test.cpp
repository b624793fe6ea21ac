#include "archive/archive_error.h"
#include "archive/shell.h"
#include "foundation/confinement.h"
#include "support/failure.h"
#include "support/snapshot.h"
#include "support/test_folder.h"

#include <QElapsedTimer>
#include <QTest>
#include <QTimer>

#include <csignal>
#include <fstream>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>
#ifdef __APPLE__
#include <util.h>
#else
#include <pty.h>
#endif

extern char **environ; // not declared on macOS

using namespace Qt::StringLiterals;
using namespace stowlark;

namespace {

const Path fakeTool = FAKE_TOOL;

QString run(Path tool, std::vector<std::string> args, std::optional<Path> cwd = std::nullopt) {
    return failure(shell(std::move(tool), std::move(args), std::move(cwd)));
}

struct Record {
    QByteArray folder;
    QByteArrayList arguments;
    QByteArrayList environment;
};

Record readRecord(const Path &file) {
    const QList<QByteArray> parts = readFile(file).split('\0');
    const auto end = parts.indexOf("\n");
    return {parts.first(), parts.mid(1, end - 1), parts.mid(end + 1, parts.lastIndexOf("\n") - end - 1)};
}

/// The most memory that this process has used, in KB; 0 where the system does not tell.
long residentPeak() {
    std::ifstream status("/proc/self/status");
    std::string word;
    while (status >> word && word != "VmHWM:") {
    }
    long size = 0;
    status >> size;
    return size;
}

} // namespace

class ChildProcessTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void changesOnlyWhatItMay() {
        if (!canConfineThreads()) {
            QSKIP("this system cannot confine a tool");
        }
        const TestFolder folder;
        folder.write("outside/kept", "as it was");
        std::filesystem::create_directory(folder.path() / "inside");
        const auto before = snapshot(folder.path() / "outside");
        const Path tool = folder.writeTool(
            "tool",
            "cd inside && mkdir d && echo >a && mv a d && echo >b && ln b d && echo >/dev/null || exit\n"
            "cd ../outside; mkdir new; echo >new; echo >kept; rm kept; mv kept ../inside;"
            "ln kept ../inside; ln -s x new; mv ../inside/b .; mkfifo new; exit 0");
        QCOMPARE(failure(shell(tool, {}, folder.path(), std::nullopt, {folder.path() / "inside"})),
                 QString());
        QCOMPARE(difference(before, snapshot(folder.path() / "outside")), QByteArray());
        QCOMPARE(snapshot(folder.path() / "inside").size(), 5U);
        folder.write("outside/kept", "this program itself still may");
    }

    void passesEverythingOnExactly() {
        const TestFolder folder;
        const std::vector<std::string> args{"record",
                                            (folder.path() / "record").native(),
                                            "",
                                            "two words",
                                            "\"'\\`$HOME*",
                                            "line\nbreak",
                                            "-rf",
                                            "--",
                                            "\xff\xfe",
                                            "\u00e9",
                                            std::string(100'000, 'a')};
        qputenv("GZIP", "-1");
        const std::map<std::string, std::string> env{{"GZIP", "-9"}, {"EMPTY", ""}, {"ODD", "a=b\nc"}};
        QCOMPARE(failure(shell(fakeTool, args, folder.temporary(), env)), QString());
        const Record told = readRecord(folder.path() / "record");
        QCOMPARE(told.folder.toStdString(), std::filesystem::canonical(folder.temporary()).native());
        QCOMPARE(told.arguments.mid(1).size(), static_cast<qsizetype>(args.size()));
        for (std::size_t i = 0; i < args.size(); ++i) {
            QCOMPARE(told.arguments.at(static_cast<qsizetype>(i) + 1).toStdString(), args[i]);
        }
        QCOMPARE(told.environment.count("GZIP=-9"), 1);
        QCOMPARE(told.environment.count("GZIP=-1"), 0);
        QVERIFY(told.environment.contains("EMPTY=") && told.environment.contains("ODD=a=b\nc"));

        QCOMPARE(run(fakeTool, {"record", (folder.path() / "plain").native()}), QString());
        const Record plain = readRecord(folder.path() / "plain");
        QByteArrayList own;
        for (char **variable = environ; *variable != nullptr; ++variable) {
            own.append(*variable);
        }
        QCOMPARE(plain.environment, own);
        QCOMPARE(plain.folder.toStdString(), std::filesystem::current_path().native());
        qunsetenv("GZIP");

        // A dropped item named like a tool is none.
        const QByteArray usual = qgetenv("PATH");
        folder.writeTool("ls", "echo dropped; exit 1");
        qputenv("PATH", ".::" + usual + "::x");
        const QString said = failure(shell("/bin/sh", {"-c", "ls >&2; exit 2"}, folder.path()));
        qputenv("PATH", usual);
        QVERIFY2(said.contains(u"record") && !said.contains(u"dropped"), qPrintable(said));
    }

    void givesTheChildNothingElse() {
        QCOMPARE(run(fakeTool, {"descriptors"}), QString());
        // A program started with signals ignored or blocked must not pass that on.
        std::signal(SIGTERM, SIG_IGN);
        QVERIFY(!run("/bin/sh", {"-c", "kill -TERM $$; exit 0"}).isNull());
        std::signal(SIGTERM, SIG_DFL);
    }

    void decidesByTheExitStatusAlone() {
        QCOMPARE(run("/bin/sh", {"-c", "echo error: failed >&2"}), QString());
        QCOMPARE(run("/bin/sh", {"-c", "echo all fine; exit 3"}), QStringLiteral("all fine"));
        QCOMPARE(run("/bin/sh", {"-c", "printf ' \\n\\t first\\n\\n second \\n '; exit 1"}),
                 QStringLiteral("first\n\n second"));
        QCOMPARE(run("/bin/sh", {"-c", "exit 2"}), QStringLiteral("Archive creation failed."));
        QCOMPARE(run("/bin/sh", {"-c", "printf 'bad \\377 bytes'; exit 1"}),
                 QStringLiteral("Archive creation failed."));
        QCOMPARE(run(fakeTool, {"die"}), QStringLiteral("last words"));
    }

    void reportsAToolThatCannotBeLaunchedAtOnce() {
        const TestFolder folder;
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(run("/none/zip", {}),
                 QStringLiteral("The tool “zip” couldn’t be launched because there is no such file."));
        QCOMPARE(run(folder.write("data", "x"), {}),
                 QStringLiteral("The tool “data” couldn’t be launched because you don’t have permission."));
        QCOMPARE(run(fakeTool, {}, folder.path() / "gone"),
                 QStringLiteral("The folder “gone” couldn’t be opened because there is no such folder."));
        QCOMPARE(run(fakeTool, std::vector<std::string>(40, std::string(100'000, 'a'))),
                 QStringLiteral(
                     "The tool “fake_tool” couldn’t be launched because too many items were passed to it."));
        QVERIFY(timer.elapsed() < 1000);
        QCOMPARE(folder.temporaryItems().size(), 0U);
    }

    void swallowsAGigabyteOfOutput() {
        const TestFolder folder;
        std::ofstream("/proc/self/clear_refs") << '5'; // forgets the peak of earlier tests
        const long before = residentPeak();
        QCOMPARE(run(fakeTool, {"print", "1000000000", "0"}), QString());
        QVERIFY2(residentPeak() - before < 8 << 10, qPrintable(QString::number(residentPeak() - before)));
        QCOMPARE(folder.temporaryItems().size(), 0U);
    }

    void keepsTheOutputOfAFailureInOrder() {
        const TestFolder folder;
        QCOMPARE(run(fakeTool, {"print", "5000000", "1"}), QString(5'000'000, u'x'));
        QStringList lines;
        for (int i = 0; i < 20'000; ++i) {
            lines += QStringLiteral("line %1").arg(i);
        }
        QCOMPARE(run(fakeTool, {"interleave", "20000"}), lines.join(u'\n'));
        // Huge ones lose their middle, but half of no character.
        const QString huge = run("/bin/sh", {"-c", "yes öäüß | head -c 20000000; exit 1"});
        QVERIFY(huge.size() < 6 << 20 && huge.startsWith(u"öäüß\n"));
        QVERIFY(huge.contains(u"ö\n…\n") && !huge.contains(QChar::ReplacementCharacter));
        QCOMPARE(run("/bin/sh", {"-c", "head -c 7000000 /dev/zero | tr '\\0' '\\200'; exit 1"}),
                 u"Archive creation failed."_s);
    }

    void keepsTheEventLoopTurning() {
        int turns = 0;
        QTimer timer;
        connect(&timer, &QTimer::timeout, this, [&] { ++turns; });
        timer.start(10);
        QCOMPARE(run("/bin/sleep", {"0.5"}), QString());
        QVERIFY2(turns > 20, qPrintable(QString::number(turns)));
    }

    /// Runs `unzip` on a locked archive from a program that has a terminal, as one started by hand has.
    void doesNotWaitForAPassword() {
        const TestFolder folder;
        folder.write("in/secret.txt", "secret");
        QCOMPARE(run("/usr/bin/zip", {"-q", "-P", "key", "locked.zip", "secret.txt"}, folder.path() / "in"),
                 QString());
        QElapsedTimer timer;
        timer.start();
        int terminal = -1;
        const pid_t child = ::forkpty(&terminal, nullptr, nullptr, nullptr);
        if (child == 0) {
            const std::string archive = folder.path() / "in/locked.zip";
            ::execl(QCoreApplication::applicationFilePath().toLocal8Bit().constData(), "test", "--unzip",
                    archive.c_str(), nullptr);
            ::_exit(127);
        }
        int status = 0;
        pid_t ended = 0;
        while ((ended = ::waitpid(child, &status, WNOHANG)) == 0 && timer.elapsed() < 5000) {
            QTest::qWait(20);
        }
        if (ended == 0) {
            ::kill(child, SIGKILL);
            ::waitpid(child, &status, 0);
        }
        ::close(terminal);
        QVERIFY2(timer.elapsed() < 2000, "it waited");
        QVERIFY(WIFEXITED(status) && WEXITSTATUS(status) == 42);
    }
};

int main(int argc, char **argv) {
    QCoreApplication application(argc, argv);
    if (argc == 3 && qstrcmp(argv[1], "--unzip") == 0) {
        const int terminal = ::open("/dev/tty", O_RDWR);
        const bool failed =
            !run("/usr/bin/unzip", {"-o", argv[2], "-d", argv[2] + std::string(".out")}).isEmpty();
        return terminal < 0 ? 43 : failed ? 42 : 0;
    }
    ChildProcessTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "child_process_test.moc"
