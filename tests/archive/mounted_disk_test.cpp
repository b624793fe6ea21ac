#include "archive/archive_manager.h"
#include "foundation/file_url.h"
#include "support/test_folder.h"

#include <QCoro/QCoroCore>
#include <QTest>

#include <cerrno>
#include <fstream>

#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace stowlark;

/// Runs in a mount namespace of its own, in which what is mounted goes with the process.
class MountedDiskTest : public QObject {
    Q_OBJECT

public:
    explicit MountedDiskTest(bool mayMount)
        : mayMount_(mayMount) {}

private Q_SLOTS:
    void init() {
        if (!mayMount_) {
            QSKIP("this machine does not let a test mount a file system");
        }
    }

    void saysSoWhereverTheDiskIsFull() {
        const TestFolder folder;
        const Path disk = folder.path() / "disk";
        std::filesystem::create_directory(disk);
        QCOMPARE(::mount("tmpfs", disk.c_str(), "tmpfs", 0, "size=1m"), 0);
        const Path file = folder.write("in/large.txt", someText(3'000'000));
        const Path fits = folder.write("in/small.txt", "small");
        ArchiveManager manager;
        const auto create = [&](const Path &input, ArchiveFormat format, const Path &output) {
            QCoro::waitFor(
                manager.createArchive({fileUrl(input)}, format, CompressionLevel::fast, fileUrl(output)));
            return manager.statusMessage();
        };
        // The archive does not fit: the tool's own words.
        std::vector<std::pair<ArchiveFormat, const char *>> formats{{ArchiveFormat::zip, "a.zip"},
                                                                    {ArchiveFormat::tarGz, "a.tar.gz"}};
        if (Tools().findTool("7z")) {
            formats.emplace_back(ArchiveFormat::sevenZ, "a.7z");
        }
        for (const auto &[format, name] : formats) {
            const QString said = create(file, format, disk / name);
            QVERIFY2(said.contains(u"No space left on device"), qPrintable(said));
            QVERIFY(manager.statusIsError() && !manager.isCreating() && manager.lastOutputURL().isEmpty());
            std::filesystem::remove(disk / name);
        }
        if (std::filesystem::exists(Tools().hdiutil)) {
            QVERIFY(
                create(file, ArchiveFormat::dmg, disk / "a.dmg").contains(u"isn’t enough space on the disk"));
            QVERIFY(std::filesystem::is_empty(disk));
        }
        // What was unpacked does not fit.
        create(file, ArchiveFormat::tarGz, folder.path() / "a.tar.gz");
        QVERIFY(!manager.statusIsError());
        QCoro::waitFor(manager.extractArchive(manager.lastOutputURL(), fileUrl(disk)));
        QVERIFY(manager.statusIsError() && manager.statusMessage().contains(u"tar: large.txt: Wrote only"));
        std::filesystem::remove_all(disk / "a");
        // The copies do not fit; they stay.
        qputenv("TMPDIR", QByteArray::fromStdString(disk.native()));
        QCOMPARE(create(file, ArchiveFormat::zip, folder.path() / "a.zip"),
                 u"The file “large.txt” couldn’t be copied because there isn’t enough space on the disk."_s);
        QVERIFY(manager.statusIsError() && !manager.isCreating());
        QCOMPARE(std::distance(std::filesystem::directory_iterator(disk), {}), 1);
        std::filesystem::remove_all(std::filesystem::directory_iterator(disk)->path());
        create(fits, ArchiveFormat::zip, folder.path() / "a.zip");
        QVERIFY2(!manager.statusIsError(), qPrintable(manager.statusMessage()));
        ::umount(disk.c_str());
    }

    /// With no room for what a tool says, it still does its work.
    void worksWithAFullTemporaryFolder() {
        const TestFolder folder;
        const Path file = folder.write("small.txt", "small");
        const Path output = folder.path() / "a.zip";
        ArchiveManager manager;
        const auto create = [&] {
            QCoro::waitFor(manager.createArchive({fileUrl(file)}, ArchiveFormat::zip, CompressionLevel::fast,
                                                 fileUrl(output)));
            return manager.statusMessage();
        };
        const auto extract = [&](const Path &archive) {
            QCoro::waitFor(manager.extractArchive(fileUrl(archive), fileUrl(folder.path() / "out")));
            return !manager.statusIsError();
        };
        QCOMPARE(create(), u"Archive created: a.zip"_s);
        const Path kept = folder.path() / "kept.zip";
        std::filesystem::rename(output, kept);
        const Path temporary = folder.temporary();
        QCOMPARE(::mount("tmpfs", temporary.c_str(), "tmpfs", 0, "size=64k"), 0);
        folder.write("tmp/fill", QByteArray(100'000, 'x'));
        QCOMPARE(create(),
                 u"The file “small.txt” couldn’t be copied because there isn’t enough space on the disk."_s);
        QVERIFY(extract(kept));
        QCOMPARE(readFile(folder.path() / "out/kept/small.txt"), "small");
        QVERIFY(!extract(folder.write("damaged.zip", someText(5000))));
        QCOMPARE(manager.statusMessage(), u"Archive creation failed."_s);
        QCOMPARE(folder.temporaryItems().size(), 2U);
        ::umount(temporary.c_str());

        QCOMPARE(::mount("tmpfs", temporary.c_str(), "tmpfs", 0, "nr_inodes=1"), 0); // for itself
        QVERIFY(create().endsWith(u"couldn’t be created because there isn’t enough space on the disk."));
        QVERIFY(!extract(kept));
        QCOMPARE(manager.statusMessage(),
                 u"The folder “tmp” couldn’t be opened because there isn’t enough space on the disk."_s);
        ::umount(temporary.c_str());
    }

    /// It may be a writable one: removing the mount point would empty the user's image.
    void keepsAVolumeThatStaysMounted() {
        const TestFolder folder;
        const Path tool = folder.writeTool("hdiutil", "[ $1 = attach ] || exit 1\n"
                                                      "mount -t tmpfs tmpfs $4 && echo precious >$4/notes");
        ArchiveManager manager({.hdiutil = tool});
        QCoro::waitFor(manager.extractArchive(fileUrl(folder.path() / "a.dmg"), fileUrl(folder.path())));
        QVERIFY2(!manager.statusIsError(), qPrintable(manager.statusMessage()));
        QCOMPARE(readFile(folder.path() / "a/notes"), "precious\n");
        const Path mounted = folder.temporary() / folder.temporaryItems("Crateloom-dmg-").at(0);
        QCOMPARE(readFile(mounted / "notes"), "precious\n");
        QCOMPARE(::umount(mounted.c_str()), 0);
    }

private:
    bool mayMount_;
};

namespace {

bool writeTo(const char *file, const std::string &text) {
    std::ofstream stream(file);
    return static_cast<bool>(stream << text << std::flush);
}

/// Before any thread is started. An ordinary user becomes root of a namespace, under the same number outside.
bool enterNamespace() {
    const uid_t user = ::geteuid();
    const gid_t group = ::getegid();
    if (user == 0) {
        return ::unshare(CLONE_NEWNS) == 0;
    }
    return ::unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0 && writeTo("/proc/self/setgroups", "deny") &&
           writeTo("/proc/self/uid_map", "0 " + std::to_string(user) + " 1") &&
           writeTo("/proc/self/gid_map", "0 " + std::to_string(group) + " 1");
}

} // namespace

int main(int argc, char **argv) {
    const bool mayMount =
        enterNamespace() && ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
    QCoreApplication application(argc, argv);
    MountedDiskTest test(mayMount);
    return QTest::qExec(&test, argc, argv);
}
#include "mounted_disk_test.moc"
