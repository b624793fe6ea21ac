#include "archive/tools.h"
#include "diskimage/checked_disk.h"
#include "diskimage/checked_volume.h"
#include "diskimage/udif_writer.h"
#include "support/snapshot.h"
#include "support/test_folder.h"

#include <QProcess>
#include <QRandomGenerator>
#include <QStandardPaths>
#include <QTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace stowlark;

namespace {

struct Outcome {
    int status = -1; ///< -1 if the program did not end by itself
    QString said;
};

void start(QProcess &process, const Path &tool, const std::vector<std::string> &arguments) {
    QStringList list;
    for (const std::string &argument : arguments) {
        list += QString::fromStdString(argument);
    }
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QString::fromStdString(tool.native()), list);
}

Outcome run(const Path &tool, const std::vector<std::string> &arguments) {
    QProcess process;
    start(process, tool, arguments);
    const bool ended = process.waitForFinished(50'000) && process.exitStatus() == QProcess::NormalExit;
    if (!ended) {
        process.kill();
        process.waitForFinished();
    }
    return {ended ? process.exitCode() : -1, QString::fromUtf8(process.readAll())};
}

Outcome hdiutil(const std::vector<std::string> &arguments) {
    return run(Tools().hdiutil, arguments);
}

Outcome create(const Path &source, const Path &image,
               std::vector<std::string> options = {"-format", "UDZO"}) {
    options.insert(options.begin(),
                   {"create", "-volname", "My: “Volume”", "-srcfolder", source.native(), "-ov"});
    options.push_back(image.native());
    return hdiutil(options);
}

Outcome attach(const Path &image, const Path &mountPoint) {
    std::filesystem::create_directory(mountPoint);
    return hdiutil(
        {"attach", image.native(), "-mountpoint", mountPoint.native(), "-nobrowse", "-quiet", "-noverify"});
}

#define VERIFY_SUCCESS(outcome)                                                                              \
    do {                                                                                                     \
        const Outcome ended = outcome;                                                                       \
        QVERIFY2(ended.status == 0, qPrintable(ended.said));                                                 \
    } while (false)

void setDate(const Path &item, time_t date) {
    const timespec dates[]{{date, 0}, {date, 0}};
    ::utimensat(AT_FDCWD, item.c_str(), dates, AT_SYMLINK_NOFOLLOW);
}

/// Everything that a volume can carry, with dates in whole seconds.
Path makeTree(const TestFolder &folder, int files) {
    for (const char *name :
         {"a", "A", "--double", "a:b", "12:30\\x", "tab\there", "a\nb", " space ", "ünïcödé \u00e9",
          "\u1e69\u0323", "한국어", "\U0001F600", "\u2126 stays", ".hidden"}) {
        folder.write(Path("in/names") / name, name);
    }
    folder.write(Path("in") / std::string(255, 'n') / std::string(255, 'm'), someText(4096));
    folder.write("in/text", someText(3'000'000));
    folder.write("in/zeros", QByteArray(5'000'000, '\0') + "end");
    QByteArray noise(2'500'000, Qt::Uninitialized);
    QRandomGenerator(1).fillRange(reinterpret_cast<quint32 *>(noise.data()), noise.size() / 4);
    folder.write("in/noise", noise);
    for (int i = 0; i < files; ++i) {
        folder.write("in/many/" + std::to_string(i), QByteArray::number(i % 7));
    }
    const Path in = folder.path() / "in";
    folder.write("in/empty file", "");
    std::filesystem::create_directories(in / "read only" / "empty");
    std::filesystem::create_symlink("text", in / "relative");
    std::filesystem::create_symlink("/etc/passwd", in / "absolute");
    std::filesystem::create_symlink("nowhere: at all", in / "broken");
    std::filesystem::create_symlink("../../names/a", in / "read only" / "up");
    std::filesystem::create_directory_symlink("names", in / "to a folder");
    std::filesystem::create_hard_link(in / "text", in / "hard");
    ::chmod((in / "noise").c_str(), 0751);
    ::chmod((in / "text").c_str(), 0400);
    ::chmod((in / "read only").c_str(), 0555);
    for (const auto &[path, line] : snapshot(in, {.times = false})) {
        setDate(in / path, 1'000'000'000 + static_cast<time_t>(path.size()));
    }
    setDate(in / "zeros", -1'500'000'000); // 1922
    return in;
}

/// What was attached, without the list of it. The volume's root has no date and no mode of its own.
std::map<std::string, std::string> attached(const Path &mountPoint) {
    auto items = snapshot(mountPoint);
    items.erase(".");
    items.erase(".stowlark-attached");
    return items;
}

std::map<std::string, std::string> contents(const Path &folder) {
    auto items = snapshot(folder);
    items.erase(".");
    return items;
}

/// The same as the program's own account of a volume gives.
std::map<std::string, std::string> contents(const imagecheck::Volume &volume) {
    std::map<std::string, std::string> items;
    for (const auto &[path, item] : volume.items) {
        const std::string name = displayText(path).normalized(QString::NormalizationForm_C).toStdString();
        items[name] = std::string(1, item.kind) + ' ' + std::to_string(item.mode) + ' ' +
                      std::to_string(item.uid) + ' ' + std::to_string(item.modified) + ' ' +
                      std::to_string(item.size) + ' ' + item.contents;
    }
    return items;
}

std::map<std::string, std::string> volumeContents(const Path &folder) {
    imagecheck::Volume volume;
    for (const auto &[path, line] : contents(folder)) {
        struct stat info {};
        ::lstat((folder / path).c_str(), &info);
        imagecheck::VolumeItem &item = volume.items[path];
        item.kind = S_ISDIR(info.st_mode) ? 'd' : S_ISLNK(info.st_mode) ? 'l' : 'f';
        item.mode = info.st_mode;
        item.uid = info.st_uid;
        item.modified = info.st_mtime;
        if (item.kind != 'd') {
            item.size = static_cast<std::uint64_t>(info.st_size);
            const QByteArray bytes = item.kind == 'f' ? readFile(folder / path) : QByteArray();
            item.contents =
                item.kind == 'l'
                    ? std::filesystem::read_symlink(folder / path).native()
                    : std::to_string(imagecheck::crcOf({reinterpret_cast<const uchar *>(bytes.data()),
                                                        static_cast<std::size_t>(bytes.size())}));
        }
    }
    return contents(volume);
}

QByteArray utf16(const char *text) {
    QByteArray bytes;
    for (const QChar unit : QString::fromUtf8(text)) {
        bytes += static_cast<char>(unit.unicode() >> 8);
        bytes += static_cast<char>(unit.unicode());
    }
    return bytes;
}

/// An image of one partition that holds these bytes.
void writeImage(const Path &image, const QByteArray &volume) {
    NewFile file(image);
    UdifWriter writer(file, {}, {});
    writer.beginPartition("volume");
    writer.write(
        {reinterpret_cast<const std::uint8_t *>(volume.data()), static_cast<std::size_t>(volume.size())});
    writer.endPartition();
    writer.finish();
    file.commit(NewFile::Existing::replace);
}

QByteArray volumeIn(const Path &image) {
    const Path disk = image.native() + ".disk";
    const imagecheck::VolumePlace place = imagecheck::unpackDisk(image, disk);
    const QByteArray bytes = readFile(disk);
    std::filesystem::remove(disk);
    return bytes.mid(static_cast<qsizetype>(place.offset), static_cast<qsizetype>(place.length));
}

} // namespace

class ImageTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void areSoundAndComeBackAsTheyWere_data() {
        QTest::addColumn<QByteArray>("options");
        QTest::addColumn<int>("files");
        QTest::newRow("fast") << QByteArray("-format UDZO -imagekey zlib-level=1")
                              << 5000; // an index of indexes
        QTest::newRow("normal") << QByteArray("-format UDZO") << 500;
        QTest::newRow("best") << QByteArray("-format UDBZ") << 0;
    }
    void areSoundAndComeBackAsTheyWere() {
        QFETCH(QByteArray, options);
        QFETCH(int, files);
        const TestFolder folder;
        const Path in = makeTree(folder, files);
        const Path image = folder.path() / "image.dmg";
        std::vector<std::string> list;
        for (const QByteArray &option : options.split(' ')) {
            list.push_back(option.toStdString());
        }
        VERIFY_SUCCESS(create(in, image, list));
        const Path disk = folder.path() / "disk";
        const imagecheck::VolumePlace place = imagecheck::unpackDisk(image, disk);
        const imagecheck::Volume volume = imagecheck::readVolume(disk, place);
        QCOMPARE(volume.name, "My: “Volume”");
        QCOMPARE(difference(volumeContents(in), contents(volume)), "");
        checkWithOtherTools(folder, image, disk, place);

        const Path mountPoint = folder.path() / "mounted";
        VERIFY_SUCCESS(attach(image, mountPoint));
        QCOMPARE(difference(contents(in), attached(mountPoint)), "");
        struct stat info {};
        QVERIFY(::stat((mountPoint / "zeros").c_str(), &info) == 0 && info.st_blocks < 5000); // holes: half
        VERIFY_SUCCESS(hdiutil({"detach", mountPoint.native(), "-quiet"}));
        QVERIFY(std::filesystem::is_empty(mountPoint));
        QCOMPARE(folder.temporaryItems().size(), 0U);
    }

    void holdNothingOrMuch() {
        const TestFolder folder;
        const Path in = folder.path() / "in";
        const Path image = folder.path() / "image.dmg";
        const Path disk = folder.path() / "disk";
        std::filesystem::create_directory(in);
        VERIFY_SUCCESS(create(in, image));
        QVERIFY(imagecheck::readVolume(disk, imagecheck::unpackDisk(image, disk)).items.empty());

        constexpr std::uintmax_t size = 5'000'000'000;
        folder.write("in/sparse", "begin");
        std::filesystem::resize_file(in / "sparse", size);
        VERIFY_SUCCESS(create(in, image));
        QVERIFY(std::filesystem::file_size(image) < 100'000);
        VERIFY_SUCCESS(attach(image, folder.path() / "mounted"));
        const Path sparse = folder.path() / "mounted/sparse";
        QCOMPARE(std::filesystem::file_size(sparse), size);
        QFile file(QString::fromStdString(sparse.native()));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.read(8), QByteArray("begin\0\0\0", 8));
    }

    void areWholeOrNotThere() {
        const TestFolder folder;
        const Path image = folder.write("out/image.dmg", "the old one");
        const auto failing = [&](const char *name) {
            const Outcome outcome = create(folder.path() / name, image);
            return outcome.status == 1 ? outcome.said.trimmed() : QStringLiteral("no failure");
        };
        folder.write("bytes/\xff", "");
        folder.write("twins/\u00e9", "");
        folder.write("twins/e\u0301", "");
        folder.write("long/" + QString(80, u'\u1f82').toStdString(), "");
        std::filesystem::create_directory(folder.path() / "pipe");
        QCOMPARE(::mkfifo((folder.path() / "pipe/fifo").c_str(), 0600), 0);
        QVERIFY(failing("bytes").contains(u"its name isn’t UTF-8"));
        QVERIFY(failing("twins").contains(u"differ only in how their letters are composed"));
        QVERIFY(failing("long").contains(u"its name is too long"));
        QVERIFY(failing("pipe").contains(u"it is neither a file, a folder nor a link"));
        QVERIFY(failing("nowhere").contains(u"there is no such folder"));
        QVERIFY(hdiutil({"create", "-volname", "V", "-srcfolder", "/dev/null/x", "-format", "UDZO",
                         image.native()})
                    .status == 1);

        folder.write("large/noise", someText(60'000'000));
        QProcess killed;
        start(killed, Tools().hdiutil,
              {"create", "-volname", "V", "-srcfolder", folder.path() / "large", "-ov", "-format", "UDBZ",
               image});
        QVERIFY(killed.waitForStarted());
        QTest::qWait(300);
        QCOMPARE(killed.state(), QProcess::Running);
        killed.kill();
        QVERIFY(killed.waitForFinished());
        QCOMPARE(readFile(image), "the old one");
        QCOMPARE(snapshot(folder.path() / "out").size(), 2U);
    }

    void understandsNothingElse() {
        const TestFolder folder;
        const std::string path = folder.path() / "x";
        const std::vector<std::vector<std::string>> refused{
            {},
            {"info"},
            {"create", "-volname", "V", "-srcfolder", path, "-format", "UDRW", path},
            {"create", "-volname", "V", "-srcfolder", path, "-format", "UDZO", "-imagekey", "zlib-level=10",
             path},
            {"create", "-volname", "V", "-srcfolder", path, "-format", "UDBZ", "-imagekey", "zlib-level=1",
             path},
            {"create", "-volname", "", "-srcfolder", path, "-format", "UDZO", path},
            {"create", "-volname", "V", "-srcfolder", path, "-format", "UDZO"},
            {"create", "-volname", "V", "-srcfolder", path, "-format", "UDZO", "-fs", "APFS", path},
            {"attach", path},
            {"attach", path, "-mountpoint"},
            {"attach", path, "-mountpoint", path, "-readonly"},
            {"attach", path, "another", "-mountpoint", path},
            {"detach", path, "-force", "-force"},
            {"detach"}};
        for (const std::vector<std::string> &arguments : refused) {
            const Outcome outcome = hdiutil(arguments);
            QVERIFY2(outcome.status == 1 && outcome.said.contains(u"--help"), qPrintable(outcome.said));
        }
        QVERIFY(hdiutil({"--help"}).said.startsWith(u"Usage:"));
        QVERIFY(!std::filesystem::exists(path));
    }

    void detachRemovesOnlyWhatWasAttached() {
        const TestFolder folder;
        folder.write("in/folder/file", "x");
        const Path image = folder.path() / "image.dmg";
        const Path mountPoint = folder.path() / "mounted";
        VERIFY_SUCCESS(create(folder.path() / "in", image));
        VERIFY_SUCCESS(attach(image, mountPoint));
        QVERIFY(attach(image, mountPoint).said.contains(u"isn’t empty"));
        folder.write("mounted/folder/mine", "precious");
        QVERIFY(hdiutil({"detach", mountPoint.native()}).said.contains(u"was left"));
        QCOMPARE(readFile(mountPoint / "folder/mine"), "precious");
        QVERIFY(!std::filesystem::exists(mountPoint / "folder/file"));
        std::filesystem::remove(mountPoint / "folder/mine");
        VERIFY_SUCCESS(hdiutil({"detach", mountPoint.native()}));
        QVERIFY(std::filesystem::is_empty(mountPoint));
        QVERIFY(hdiutil({"detach", mountPoint.native()}).said.contains(u"No disk image is attached"));
        QVERIFY(attach(folder.path(), mountPoint).said.contains(u"isn’t a disk image"));
        VERIFY_SUCCESS(attach(image, mountPoint));
        std::filesystem::remove_all(mountPoint / "folder");
        VERIFY_SUCCESS(hdiutil({"detach", mountPoint.native()}));
        // A link that has taken the place of a folder is not followed.
        VERIFY_SUCCESS(attach(image, mountPoint));
        std::filesystem::rename(mountPoint / "folder", folder.path() / "elsewhere");
        std::filesystem::create_directory_symlink("../elsewhere", mountPoint / "folder");
        QCOMPARE(hdiutil({"detach", mountPoint.native()}).status, 1);
        QCOMPARE(readFile(folder.path() / "elsewhere/file"), "x");
    }

    /// The same volume as a bare disk, which only 7z reads. It writes "_" for ":" and lets the owner write to
    /// every folder.
    void readsOtherImagesWithSevenZip() {
        const TestFolder folder;
        const Path in = makeTree(folder, 100);
        std::filesystem::rename(in / "names/a:b", in / "names/a_b");
        std::filesystem::rename(in / "names/12:30\\x", in / "names/12_30");
        std::filesystem::remove(in / "names/a\nb");
        std::filesystem::remove(in / "names/tab\there");
        ::chmod((in / "read only").c_str(), 0755);
        setDate(in / "names", 1'000'000'000);
        const Path image = folder.path() / "image.dmg";
        VERIFY_SUCCESS(create(in, image));
        imagecheck::unpackDisk(image, folder.path() / "disk*.dmg"); // no pattern
        std::filesystem::copy_file(image, folder.path() / "disk 2.dmg");
        const Path mountPoint = folder.path() / "mounted*";
        const Outcome outcome = attach(folder.path() / "disk*.dmg", mountPoint);
        if (outcome.said.contains(u"isn’t installed")) {
            QSKIP("7z is not installed");
        }
        VERIFY_SUCCESS(outcome);
        QCOMPARE(difference(contents(in), attached(mountPoint)), "");
        VERIFY_SUCCESS(hdiutil({"detach", mountPoint.native()}));
        QVERIFY(std::filesystem::is_empty(mountPoint));
    }

    /// As HFS+ stores them: the contents in a folder of its own, and links that tell their number.
    void givesHardLinksTheirContents() {
        const TestFolder folder;
        folder.write("in/link", "");
        folder.write("in/ZZZZHFS+ Private Data/iNode77", "shared");
        const Path image = folder.path() / "image.dmg";
        VERIFY_SUCCESS(create(folder.path() / "in", image));
        QByteArray volume = volumeIn(image).replace(utf16("ZZZZ"), QByteArray(8, '\0'));
        const qsizetype record = volume.indexOf(utf16("link") + QByteArray("\0\2", 2)) + 8;
        volume.replace(record + 44, 12, QByteArray("\0\0\0\x4dhlnkhfs+", 12));
        for (const char *number : {"iNode77", "iNode78"}) {
            writeImage(image, QByteArray(volume).replace(utf16("iNode77"), utf16(number)));
            const Path mountPoint = folder.path() / number;
            const Outcome outcome = attach(image, mountPoint);
            if (number == std::string_view("iNode77")) {
                VERIFY_SUCCESS(outcome);
                QCOMPARE(readFile(mountPoint / "link"), "shared");
                QCOMPARE(attached(mountPoint).size(), 1U);
            } else {
                QVERIFY(outcome.said.contains(u"is damaged"));
            }
        }
    }

    void staysInsideWhateverAnImageSays() {
        const TestFolder folder;
        const Path outside = folder.write("outside/file", "untouched").parent_path();
        folder.write("in/dd/BBBB", "from the image");
        folder.write("in/AA/file", "from the image");
        std::filesystem::create_directory_symlink(outside, folder.path() / "in/CC");
        const Path image = folder.path() / "image.dmg";
        VERIFY_SUCCESS(create(folder.path() / "in", image));
        const QByteArray volume = volumeIn(image);
        const auto renamed = [&volume](const char *from, const char *to) {
            return QByteArray(volume).replace(utf16(from), utf16(to));
        };
        QByteArray endless = volume;
        QByteArray distant = volume;
        distant.replace(QByteArray("\0\0\0\0\0\0\0\x0e", 8),
                        QByteArray("\x7f\xff\xff\xff\xff\xff\xff\x0e", 8));
        for (qsizetype node = 0; node + 8192 <= volume.size(); node += 4096) {
            if (endless.mid(node + 8, 2) == QByteArray("\xff\x01", 2)) { // a leaf follows itself
                endless.replace(node, 4, QByteArray("\0\0\0\1", 4));
            }
        }
        const std::vector<QByteArray> hostile{renamed("AA", ".."),
                                              renamed("BBBB", "..:x"),
                                              renamed("dd", "CC"),
                                              renamed("AA", "CC"),
                                              endless,
                                              distant,
                                              volume.left(volume.size() / 2),
                                              QByteArray(volume.size(), '\0')};
        const auto before = snapshot(outside);
        for (std::size_t i = 0; i < hostile.size(); ++i) {
            for (const bool bare : {false, true}) { // by the program itself, by 7z
                const Path bad = folder.path() / "hostile.dmg";
                bare ? void(folder.write("hostile.dmg", hostile[i])) : writeImage(bad, hostile[i]);
                const Path mountPoint = folder.path() / "deep/er/mounted";
                std::filesystem::create_directories(mountPoint);
                const Outcome outcome = attach(bad, mountPoint);
                QVERIFY2(outcome.status == (bare ? outcome.status != 0 : 1),
                         qPrintable(QString::number(i) + outcome.said));
                QVERIFY(outcome.status == 0 || std::filesystem::is_empty(mountPoint));
                QCOMPARE(snapshot(folder.path() / "deep", {.times = false}).size() -
                             snapshot(mountPoint, {.times = false}).size(),
                         2U);
                QCOMPARE(difference(before, snapshot(outside)), "");
                std::filesystem::remove_all(folder.path() / "deep");
            }
        }
    }

    /// The image as a whole, and its volume, where no checksum is in the way.
    void survivesDamageAnywhere() {
        const TestFolder folder;
        for (int i = 0; i < 60; ++i) {
            folder.write("in/folder/file " + std::to_string(i), someText(500, i));
        }
        std::filesystem::create_symlink("nowhere", folder.path() / "in/link");
        const Path image = folder.path() / "image.dmg";
        VERIFY_SUCCESS(create(folder.path() / "in", image));
        const QByteArray whole = readFile(image);
        const QByteArray volume = volumeIn(image);
        QRandomGenerator random(7);
        const Path bad = folder.path() / "damaged.dmg";
        const Path mountPoint = folder.path() / "mounted";
        const auto damaged = [&random](QByteArray bytes) {
            const auto at = random.bounded(bytes.size());
            bytes[at] = static_cast<char>(bytes[at] ^ (1 << random.bounded(8)));
            return random.bounded(10) == 0 ? bytes.left(random.bounded(bytes.size())) : bytes;
        };
        for (int i = 0; i < 200; ++i) {
            i % 2 == 0 ? void(folder.write("damaged.dmg", damaged(whole))) : writeImage(bad, damaged(volume));
            const Outcome outcome = attach(bad, mountPoint);
            QVERIFY2(outcome.status == 0 || (outcome.status == 1 && !outcome.said.isEmpty()),
                     qPrintable(QString::number(i)));
            if (outcome.status == 0) {
                VERIFY_SUCCESS(hdiutil({"detach", mountPoint.native()}));
            }
            QVERIFY(std::filesystem::is_empty(mountPoint));
        }
        QCOMPARE(snapshot(folder.path(), {.times = false}).size(), snapshot(folder.path() / "in").size() + 5);
    }

private:
    static void checkWithOtherTools(const TestFolder &folder, const Path &image, const Path &disk,
                                    imagecheck::VolumePlace place) {
        const auto find = [](const char *name) {
            const Path found = QStandardPaths::findExecutable(QString::fromLatin1(name),
                                                              qEnvironmentVariable("PATH").split(u':') +
                                                                  QStringList{u"/sbin"_s, u"/usr/sbin"_s})
                                   .toStdString();
            if (found.empty()) {
                qInfo("%s is not installed: not checked with it", name);
            }
            return found;
        };
        if (const Path tool = find("7z"); !tool.empty()) {
            VERIFY_SUCCESS(run(tool, {"t", image.native()}));
        }
        if (const Path tool = find("dmg2img"); !tool.empty()) {
            const Path other = folder.path() / "other disk";
            VERIFY_SUCCESS(run(tool, {"-s", image.native(), other.native()}));
            QVERIFY(readFile(other) == readFile(disk));
        }
        if (const Path tool = find("fsck.hfsplus"); !tool.empty()) {
            const Path volume = folder.path() / "volume";
            std::filesystem::copy_file(disk, volume);
            std::filesystem::resize_file(volume, place.offset + place.length);
            const QByteArray bytes = readFile(volume).mid(static_cast<qsizetype>(place.offset));
            folder.write("volume", bytes);
            VERIFY_SUCCESS(run(tool, {"-n", "-f", volume.native()}));
        }
    }
};

QTEST_GUILESS_MAIN(ImageTest)
#include "image_test.moc"
