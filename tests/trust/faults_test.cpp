#include "support/operations.h"
#include "support/ordinary_user.h"
#include "support/snapshot.h"
#include "support/test_folder.h"

#include <QTest>
#include <QTimer>

#include <atomic>
#include <csignal>
#include <fstream>
#include <set>
#include <thread>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace stowlark;

namespace {

/// The folder "in" with many files in folders.
Path makeTree(const TestFolder &folder, int files, qsizetype size) {
    const QByteArray text = someText(size);
    for (int i = 0; i < files; ++i) {
        folder.write(Path("in") / std::to_string(i % 10) / std::to_string(i), text);
    }
    return folder.path() / "in";
}

/// Gives all that the test's folder holds to the user that OrdinaryUser makes of root.
void giveToOrdinaryUser(const TestFolder &folder) {
    ::lchown(folder.path().c_str(), OrdinaryUser::number, OrdinaryUser::number);
    for (const auto &entry : std::filesystem::recursive_directory_iterator(folder.path())) {
        ::lchown(entry.path().c_str(), OrdinaryUser::number, OrdinaryUser::number);
    }
}

/// Changes a file that may be copied at this moment, or puts something else in its place.
void change(const Path &file, unsigned how, const Path &other) {
    std::error_code none;
    if (how == 0) {
        std::filesystem::resize_file(file, 0, none);
    } else if (how == 1) {
        std::filesystem::resize_file(file, 500'000, none);
    } else if (how == 2) {
        ::chmod(file.c_str(), 0);
    } else {
        std::filesystem::remove(file, none);
    }
    if (how == 3) {
        std::filesystem::create_symlink(other, file, none);
    } else if (how == 4) {
        ::mkfifo(file.c_str(), 0600);
    } else if (how == 6) {
        std::filesystem::create_directory(file, none);
    }
}

std::ptrdiff_t countIn(const char *folder) {
    std::error_code none;
    return std::distance(std::filesystem::directory_iterator(folder, none), {});
}

/// The memory in use, in KB; 0 where the system does not tell.
long residentMemory() {
    std::ifstream statm("/proc/self/statm");
    long pages = 0;
    statm >> pages >> pages;
    return pages * (::sysconf(_SC_PAGESIZE) / 1024);
}

} // namespace

/// What goes wrong around an operation: it ends, says so, leaves no more than it may, and harms nothing.
class FaultsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// Where a test can have a small disk, mounted_disk_test shows it with the real tools.
    void outlivesToolsThatFailHalfWay() {
        const TestFolder folder;
        const Path in = makeTree(folder, 10, 1000);
        const auto before = snapshot(in);
        const Path output = folder.path() / "o.zip";
        for (const auto &[end, said] : {std::pair("echo 'o.zip: No space left on device'; exit 14",
                                                  u"o.zip: No space left on device"_s),
                                        std::pair("echo adding; kill -SEGV $$", u"adding"_s),
                                        std::pair("kill -KILL $$", u"Archive creation failed."_s)}) {
            const Path tool = folder.writeTool(
                "tool",
                "case $1 in -o) echo half >\"$4/half\";; *) echo half >\"$3\";; esac\n" + QByteArray(end));
            ArchiveManager manager({.zip = tool, .unzip = tool});
            create(manager, {in}, output);
            QCOMPARE(manager.statusMessage(), said);
            QVERIFY(manager.statusIsError() && !manager.isCreating() && manager.lastOutputURL().isEmpty());
            QCOMPARE(readFile(output), "half\n"); // what the tool left
            extract(manager, folder.write("a.zip", ""), folder.path());
            QVERIFY(manager.statusIsError() && manager.statusMessage() == said);
            QCOMPARE(folder.temporaryItems().size(), 0U);
        }
        QCOMPARE(difference(before, snapshot(in)), QByteArray());
    }

    void harmsNothingWhenItIsKilled() {
        const TestFolder folder;
        const Path in = makeTree(folder, 200, 200'000);
        const auto before = snapshot(folder.path() / "in");
        const Path started = folder.path() / "started";
        const Path tool = folder.writeTool("zip", "cd ../..; echo half >o.zip; : >started\n"
                                                  "while ! [ -e stop ]; do sleep 0.05; done; : >ended");
        const auto runAndKill = [&](const std::function<bool()> &now) {
            const pid_t child = ::fork();
            if (child == 0) {
                ::execl(QCoreApplication::applicationFilePath().toLocal8Bit().constData(), "test", "--create",
                        tool.c_str(), in.c_str(), (folder.path() / "o.zip").c_str(), nullptr);
                ::_exit(127);
            }
            const bool came = QTest::qWaitFor(now, 60'000);
            ::kill(child, SIGKILL);
            int status = 0;
            ::waitpid(child, &status, 0);
            return came && WIFSIGNALED(status);
        };
        // In the midst of the tool's work, and then of the copies.
        QVERIFY(runAndKill([&] { return std::filesystem::exists(started); }));
        QCOMPARE(folder.temporaryItems("Crateloom-").size(), 1U);
        QCOMPARE(readFile(folder.path() / "o.zip"), "half\n");
        folder.write("stop", "");
        QTRY_VERIFY(std::filesystem::exists(folder.path() / "ended"));
        QVERIFY(runAndKill([&] { return folder.temporaryItems("Crateloom-").size() == 2; }));
        QCOMPARE(folder.temporaryItems().size(), 2U);
        QCOMPARE(difference(before, snapshot(in)), QByteArray());
        std::set<std::string> names{"o.zip"};
        for (const auto &entry : std::filesystem::directory_iterator(folder.path())) {
            names.insert(entry.path().filename());
        }
        QCOMPARE(names, (std::set<std::string>{"ended", "in", "o.zip", "started", "stop", "tmp", "zip"}));
        // What is left is in nobody's way.
        ArchiveManager manager;
        create(manager, {in}, folder.path() / "o.zip");
        QVERIFY2(!manager.statusIsError(), qPrintable(manager.statusMessage()));
    }

    void mayLoseItsFoldersMeanwhile() {
        const TestFolder folder;
        const Path in = makeTree(folder, 10, 1000);
        const auto before = snapshot(in);
        std::filesystem::create_directory(folder.path() / "out");
        const QByteArray removeFirst = "rm -rf '" + QByteArray::fromStdString(folder.path().native()) + "/";
        const Path losesOutput = folder.writeTool("1", removeFirst + "out'; exec zip \"$@\"");
        const Path losesStage = folder.writeTool("2", removeFirst + "tmp'; exec zip \"$@\"");
        const Path waits = folder.writeTool("3", ": >\"$4/started\"; while [ -e \"$4\" ]; do sleep 0.01; "
                                                 "done; exec unzip \"$@\"");
        for (const Path &tool : {losesOutput, losesStage}) {
            ArchiveManager manager({.zip = tool});
            create(manager, {in}, folder.path() / "out/o.zip");
            QVERIFY(manager.statusIsError() && manager.statusMessage().contains(u"zip"));
        }
        ArchiveManager manager({.unzip = waits});
        create(manager, {in}, folder.path() / "o.zip"); // the temporary folder is made again
        QVERIFY2(!manager.statusIsError(), qPrintable(manager.statusMessage()));
        QTimer remover;
        QObject::connect(&remover, &QTimer::timeout, [&folder] {
            if (std::filesystem::exists(folder.path() / "out/put/o/started")) {
                std::filesystem::remove_all(folder.path() / "out");
            }
        });
        remover.start(10);
        extract(manager, folder.path() / "o.zip", folder.path() / "out/put");
        QVERIFY2(manager.statusIsError() && manager.statusMessage().contains(u"out/put"),
                 qPrintable(manager.statusMessage()));
        QCOMPARE(folder.temporaryItems().size(), 0U);
        QCOMPARE(difference(before, snapshot(in)), QByteArray());
    }

    void saysWhereItMayNotWrite() {
        const TestFolder folder;
        const Path in = makeTree(folder, 10, 1000);
        ArchiveManager manager;
        create(manager, {in}, folder.path() / "o.zip");
        giveToOrdinaryUser(folder);
        const auto before = snapshot(in);
        const OrdinaryUser user;
        ::chmod(folder.temporary().c_str(), 0500);
        create(manager, {in}, folder.path() / "new.zip");
        QVERIFY(manager.statusIsError() && !manager.isCreating());
        QVERIFY(
            manager.statusMessage().endsWith(u"” couldn’t be created because you don’t have permission."));
        extract(manager, folder.path() / "o.zip", folder.path());
        QCOMPARE(manager.statusMessage(),
                 u"The folder “tmp” couldn’t be opened because you don’t have permission."_s);
        ::chmod(folder.temporary().c_str(), 0700);
        QCOMPARE(folder.temporaryItems().size(), 0U);
        std::filesystem::create_directory(folder.path() / "read-only");
        ::chmod((folder.path() / "read-only").c_str(), 0500);
        create(manager, {in}, folder.path() / "read-only/o.zip");
        QVERIFY(manager.statusMessage().contains(u"Permission denied"));
        extract(manager, folder.path() / "o.zip", folder.path() / "read-only");
        QCOMPARE(manager.statusMessage(),
                 u"The folder “o” couldn’t be created because you don’t have permission."_s);
        QCOMPARE(folder.temporaryItems().size(), 0U);
        QCOMPARE(difference(before, snapshot(in)), QByteArray());
    }

    /// Files are emptied, lengthened, removed, locked, or replaced by links, folders and pipes all the while.
    void outlivesInputsThatChange() {
        const TestFolder folder;
        const Path outside = folder.write("outside/file", "kept");
        giveToOrdinaryUser(folder);
        const OrdinaryUser user;
        const Path in = makeTree(folder, 200, 20'000);
        const auto before = snapshot(outside.parent_path());
        std::atomic<bool> stop = false;
        std::thread other([&] {
            for (unsigned i = 0; !stop; i = i * 5 + 3) {
                const Path file = in / std::to_string(i % 10) / std::to_string(i % 200);
                change(file, i / 200 % 16, outside);
                std::this_thread::sleep_for(std::chrono::microseconds(300));
                change(file, 5, outside);
                std::ofstream(file) << "again";
            }
        });
        int failures = 0;
        QStringList oddWords;
        for (int i = 0; i < 30; ++i) {
            ArchiveManager manager;
            create(manager, {in}, folder.path() / "o.tar.gz", ArchiveFormat::tarGz);
            failures += manager.statusIsError() ? 1 : 0;
            if (manager.statusIsError() && !manager.statusMessage().startsWith(u"The f")) {
                oddWords += manager.statusMessage();
            }
        }
        stop = true;
        other.join();
        qInfo("%d of 30 creations failed", failures);
        QCOMPARE(oddWords, QStringList());
        // A copy that failed is left, and nothing else.
        QCOMPARE(folder.temporaryItems("Crateloom-").size(), static_cast<std::size_t>(failures));
        QCOMPARE(folder.temporaryItems().size(), static_cast<std::size_t>(failures));
        QCOMPARE(difference(before, snapshot(outside.parent_path())), QByteArray());
    }

    void leaksNothingIn200Operations() {
        const TestFolder folder;
        const Path in = makeTree(folder, 10, 1000);
        const Path out = folder.path() / "out";
        const Path damaged = folder.write("damaged.zip", someText(1000));
        ArchiveManager manager;
        const auto fiveOperations = [&] {
            for (const auto &[name, format] :
                 {std::pair("o.zip", ArchiveFormat::zip), std::pair("o.tar.gz", ArchiveFormat::tarGz)}) {
                create(manager, {in}, folder.path() / name, format);
                extract(manager, folder.path() / name, out);
            }
            const bool worked = !manager.statusIsError();
            extract(manager, damaged, out);
            std::filesystem::remove_all(out);
            return worked && manager.statusIsError();
        };
        for (int i = 0; i < 4; ++i) {
            QVERIFY(fiveOperations());
        }
        const auto descriptors = countIn("/dev/fd/");
        const auto threads = countIn("/proc/self/task");
        const long memory = residentMemory();
        for (int i = 0; i < 40; ++i) {
            QVERIFY(fiveOperations());
        }
        // Threads that wait for work hold one each.
        QVERIFY(countIn("/dev/fd/") <= descriptors + 8);
        QVERIFY(countIn("/proc/self/task") <= threads + 8);
        QVERIFY(::waitpid(-1, nullptr, WNOHANG) == -1 && errno == ECHILD);
        qInfo("%td descriptors, %ld KB; %ld KB before", descriptors, residentMemory(), memory);
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__) // which keep what is given back
        QVERIFY(residentMemory() - memory < 2 << 10);
#endif
        QCOMPARE(folder.temporaryItems().size(), 0U);
    }
};

int main(int argc, char **argv) {
    QCoreApplication application(argc, argv);
    if (argc == 5 && qstrcmp(argv[1], "--create") == 0) {
        ArchiveManager manager({.zip = argv[2]});
        create(manager, {argv[3]}, argv[4]);
        return 0;
    }
    FaultsTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "faults_test.moc"
