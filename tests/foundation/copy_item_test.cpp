#include "foundation/copy_item.h"
#include "foundation/descriptor.h"
#include "foundation/remove_item.h"
#include "foundation/worker.h"
#include "support/failure.h"
#include "support/ordinary_user.h"
#include "support/snapshot.h"
#include "support/test_folder.h"

#include <QElapsedTimer>
#include <QTest>
#include <QTimer>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>
#ifdef __linux__
#include <sys/xattr.h>
#endif

using namespace stowlark;

namespace {

void setTimes(const Path &item, long seconds, long nanoseconds) {
    const std::array<timespec, 2> times{timespec{seconds, 1}, timespec{seconds, nanoseconds}};
    ::utimensat(AT_FDCWD, item.c_str(), times.data(), AT_SYMLINK_NOFOLLOW);
}

void writeSparse(const Path &file, off_t size) {
    const int fd = ::open(file.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644);
    ::pwrite(fd, "begin", 5, 0);
    ::pwrite(fd, "middle", 6, size / 2);
    ::ftruncate(fd, size);
    ::close(fd);
}

} // namespace

class CopyItemTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void keepsAllThatATreeHolds() {
        const TestFolder folder;
        const Path tree = folder.path() / "tree";
        folder.write("tree/file.txt", someText(10'000));
        folder.write("tree/large.bin", someText(3'000'000));
        folder.write("tree/.hidden/empty", "");
        folder.write("tree/\xff\xfe not UTF-8/\xe4.txt", "bytes");
        folder.write("tree/line\nbreak/ -x", "odd");
        writeSparse(tree / "sparse", 64 << 20);
        writeSparse(tree / "end hole", 1 << 20);
        std::filesystem::create_directories(tree / "empty/folder");
        for (const char *target : {"file.txt", "/absolute/../x", "../../x", "empty", "nowhere else"}) {
            std::filesystem::create_symlink(target, tree / ("to " + std::to_string(std::strlen(target))));
        }
#ifdef __linux__
        if (::setxattr((tree / "file.txt").c_str(), "user.note", "\0odd", 4, 0) != 0 ||
            ::setxattr((tree / "empty").c_str(), "user.folder", "kept", 4, 0) != 0) {
            qInfo("no extended attributes here: they are not tested");
        }
#endif
        ::chmod((tree / "file.txt").c_str(), 04751);
        ::chmod((tree / "large.bin").c_str(), 0400);
        ::chmod((tree / "empty").c_str(), 01555);
        long time = 1'000'000'000;
        for (const char *item : {"to 5", "file.txt", "sparse", "empty/folder", "empty", ".hidden", "."}) {
            setTimes(tree / item, ++time, 123'456'789);
        }
        copyItem(tree, folder.path() / "copy");
        const SnapshotOptions options{.blocks = true};
        QCOMPARE(difference(snapshot(tree, options), snapshot(folder.path() / "copy", options)),
                 QByteArray());

        copyItem(tree / "to 5", folder.path() / "link");
        QVERIFY(std::filesystem::is_symlink(folder.path() / "link"));
        QVERIFY(removeOwnFolder(folder.path() / "copy"));
        QVERIFY(!std::filesystem::exists(folder.path() / "copy"));
    }

    void reachesPathsOf4000Bytes() {
        const TestFolder folder;
        std::string relative = "deep";
        while (relative.size() + folder.path().native().size() < 3970) {
            relative += "/one of many folders";
        }
        folder.write(relative + "/file", "deep");
        copyItem(folder.path() / "deep", folder.path() / "copy");
        QCOMPARE(difference(snapshot(folder.path() / "deep"), snapshot(folder.path() / "copy")),
                 QByteArray());
        removeItem(folder.path() / "copy");
        QVERIFY(!std::filesystem::exists(folder.path() / "copy"));
    }

    void reachesLongerPathsThanTheSystemTakes() {
        const TestFolder folder;
        std::filesystem::create_directory(folder.path() / "deep");
        Descriptor at = openFolder(AT_FDCWD, (folder.path() / "deep").c_str());
        std::string path;
        for (int i = 0; i < 30; ++i) {
            const std::string name(200, 'd');
            QCOMPARE(::mkdirat(at.get(), name.c_str(), 0755), 0);
            at = openFolder(at.get(), name.c_str());
            path += (i > 0 ? "/" : "") + name;
        }
        const Descriptor file(::openat(at.get(), "file", O_CREAT | O_WRONLY | O_CLOEXEC, 0644));
        QVERIFY(file);
        copyItem(folder.path() / "deep", folder.path() / "copy");
        const Descriptor copy = openFolder(AT_FDCWD, (folder.path() / "copy").c_str());
        const Descriptor inner = openFolderBelow(copy.get(), path);
        QCOMPARE(::faccessat(inner.get(), "file", F_OK, 0), 0);
        removeItem(folder.path() / "copy");
        QVERIFY(removeOwnFolder(folder.path() / "deep"));
        QVERIFY(!std::filesystem::exists(folder.path() / "copy"));
    }

    void followsNoLinkInAFoldersPlace() {
        const TestFolder folder;
        folder.write("tree/a/b/file", "x");
        std::filesystem::create_directory_symlink("a", folder.path() / "tree/link");
        const Descriptor tree = openFolder(AT_FDCWD, (folder.path() / "tree").c_str());
        QVERIFY(openFolderBelow(tree.get(), "a/b"));
        QVERIFY(openFolderBelow(tree.get(), "a/b/"));
        for (const char *path : {"link", "link/b", "link/"}) {
            QVERIFY2(!openFolderBelow(tree.get(), path), path);
        }
        QVERIFY(!openParentBelow(tree.get(), "link/b/file").first);
        QCOMPARE(openParentBelow(tree.get(), "link").second, std::string("link"));
    }

    void refusesWhatIsNoFile() {
        const TestFolder folder;
        QVERIFY(std::filesystem::create_directory(folder.path() / "tree"));
        QCOMPARE(::mkfifo((folder.path() / "tree/pipe").c_str(), 0600), 0);
        const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        qstrncpy(address.sun_path, (folder.path() / "socket").c_str(), sizeof address.sun_path);
        QCOMPARE(::bind(socket, reinterpret_cast<sockaddr *>(&address), sizeof address), 0);
        QElapsedTimer timer;
        timer.start();
        const Path target = folder.path() / "copy";
        QCOMPARE(failure([&] { copyItem(folder.path() / "tree", target); }),
                 QStringLiteral("The file “pipe” couldn’t be copied because it is a named pipe."));
        QCOMPARE(failure([&] { copyItem(folder.path() / "socket", target); }),
                 QStringLiteral("The file “socket” couldn’t be copied because it is a socket."));
        QCOMPARE(failure([&] { copyItem("/dev/null", target); }),
                 QStringLiteral("The file “null” couldn’t be copied because it is a device."));
        QCOMPARE(failure([&] { copyItem(folder.path() / "gone", target); }),
                 QStringLiteral("The file “gone” couldn’t be opened because there is no such file."));
        QVERIFY(timer.elapsed() < 1000);
        ::close(socket);
    }

    void doesNotCopyAFolderIntoItself() {
        const TestFolder folder;
        folder.write("tree/a", "a");
        const Path tree = folder.path() / "tree";
        QCOMPARE(failure([&] { copyItem(tree, tree / "copy"); }),
                 QStringLiteral("The folder “tree” couldn’t be copied because it holds the folder that the "
                                "copy would go to."));
        QCOMPARE(snapshot(tree).size(), 2U);
    }

    void needsPermission() {
        const TestFolder folder;
        folder.write("tree/locked/file", "x");
        folder.write("tree/read-only/folder/file", "x");
        ::chmod((folder.path() / "tree/read-only/folder").c_str(), 0555);
        ::chmod((folder.path() / "tree/read-only").c_str(), 0555);
        const Path tree = folder.path() / "tree";
        const auto give = [](const Path &item) { ::lchown(item.c_str(), 65534, 65534); };
        give(folder.path());
        give(tree);
        for (const auto &entry : std::filesystem::recursive_directory_iterator(tree)) {
            give(entry.path());
        }
        ::chmod((tree / "locked").c_str(), 0000);
        const OrdinaryUser user;
        QCOMPARE(failure([&] { copyItem(tree, folder.path() / "copy"); }),
                 QStringLiteral("The folder “locked” couldn’t be opened because you don’t have permission."));
        ::chmod((tree / "locked").c_str(), 0700);
        copyItem(tree, folder.path() / "second");
        QCOMPARE(difference(snapshot(tree), snapshot(folder.path() / "second")), QByteArray());
        QCOMPARE(failure([&] { removeItem(folder.path() / "second"); }),
                 QStringLiteral("The file “file” couldn’t be removed because you don’t have permission."));
        QVERIFY(removeOwnFolder(folder.path() / "second"));
        QVERIFY(!std::filesystem::exists(folder.path() / "second"));
        QVERIFY(removeOwnFolder(tree) && removeOwnFolder(folder.path() / "copy"));
    }

    void leavesTheEventLoopTurning() {
        const TestFolder folder;
        for (int i = 0; i < 3000; ++i) {
            folder.write("tree/" + std::to_string(i / 100) + '/' + std::to_string(i), "x");
        }
        int turns = 0;
        QTimer timer;
        connect(&timer, &QTimer::timeout, this, [&] { ++turns; });
        timer.start(1);
        auto work = [path = folder.path()] {
            copyItem(path / "tree", path / "copy");
            removeOwnFolder(path / "copy");
        };
        QCOMPARE(failure(onWorker(std::move(work))), QString());
        QVERIFY2(turns > 5, qPrintable(QString::number(turns)));
    }

    void handsErrorsOfWorkersOn() {
        QCOMPARE(failure(onWorker([] { removeItem("/none/x"); })),
                 QStringLiteral("The file “x” couldn’t be removed because there is no such file."));
    }
};

QTEST_GUILESS_MAIN(CopyItemTest)
#include "copy_item_test.moc"
