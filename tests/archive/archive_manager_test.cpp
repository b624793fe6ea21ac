#include "archive/shell.h"
#include "archive/staging.h"
#include "foundation/errors.h"
#include "support/failure.h"
#include "support/operations.h"
#include "support/snapshot.h"
#include "support/test_folder.h"

#include <QRegularExpression>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace stowlark;

namespace {

/// Every write of a published property, in order.
class Journal {
public:
    explicit Journal(ArchiveManager &manager) {
        const auto note = [this](const QString &line) { lines_ += line; };
        QObject::connect(&manager, &ArchiveManager::isCreatingChanged, [&manager, note] {
            note(manager.isCreating() ? QStringLiteral("busy") : QStringLiteral("idle"));
        });
        QObject::connect(&manager, &ArchiveManager::statusMessageChanged,
                         [&manager, note] { note(manager.statusMessage()); });
        QObject::connect(&manager, &ArchiveManager::statusIsErrorChanged, [&manager, note] {
            note(manager.statusIsError() ? QStringLiteral("error") : QStringLiteral("fine"));
        });
        QObject::connect(&manager, &ArchiveManager::lastOutputURLChanged,
                         [&manager, note] { note(u'<' + manager.lastOutputURL().fileName() + u'>'); });
        QObject::connect(&manager, &ArchiveManager::objectWillChange, [this] { ++announcements_; });
    }
    /// Empties it.
    QString take() {
        if (announcements_ != lines_.size()) {
            return QStringLiteral("not every change was announced");
        }
        announcements_ = 0;
        return std::exchange(lines_, {}).join(u", ");
    }

private:
    QStringList lines_;
    qsizetype announcements_ = 0;
};

/// Puts a fake in the place of every tool, which notes how it was run.
class Recorder {
public:
    explicit Recorder(const TestFolder &folder)
        : folder_(folder) {
        std::filesystem::create_directory(bin());
        for (const char *name : {"zip", "unzip", "tar", "hdiutil", "7z", "7za", "rar", "unrar"}) {
            std::filesystem::create_symlink(FAKE_TOOL, bin() / name);
        }
        qputenv("FAKE_TOOL", QByteArray::fromStdString((folder.path() / "record").native()));
    }
    ~Recorder() { qunsetenv("FAKE_TOOL"); }

    Tools tools() const {
        return {.zip = bin() / "zip",
                .unzip = bin() / "unzip",
                .tar = bin() / "tar",
                .hdiutil = bin() / "hdiutil",
                .xattr = "/none",
                .searchFolders = {bin() / ""}};
    }
    void uninstall(const char *name) const { std::filesystem::remove(bin() / name); }

    /// The last run: the tool, its working folder if that is one of the test's, its arguments, and the level
    /// if the environment tells one. "*" is the test's folder, "@" the staging folder.
    QString told() const {
        const QByteArrayList parts = takeRecord().split('\0');
        const QByteArray cwd = parts[0].contains("Crateloom-") ? " in " + parts[0] : QByteArray();
        QByteArray line = parts[1].mid(parts[1].lastIndexOf('/') + 1) + cwd + ": " +
                          parts.mid(2, parts.indexOf("\n") - 2).join('|');
        for (const QByteArray &part : parts) {
            line += part.startsWith("GZIP=") ? ' ' + part : QByteArray();
        }
        const QRegularExpression stage(u"\\*/tmp/Crateloom-[0-9A-F-]{36}"_s);
        return QString::fromUtf8(line)
            .replace(QString::fromStdString(folder_.path().native()), u"*"_s)
            .replace(stage, u"@"_s);
    }

private:
    Path bin() const { return folder_.path() / "bin"; }

    /// A tool that may write into one folder alone has left it there.
    QByteArray takeRecord() const {
        for (const auto &item : std::filesystem::recursive_directory_iterator(folder_.path())) {
            if (item.path().filename() == "record") {
                const QByteArray told = readFile(item.path());
                std::filesystem::remove(item.path());
                return told;
            }
        }
        return {};
    }

    const TestFolder &folder_;
};

#define COMPARE_FAILURE(manager, text)                                                                       \
    QVERIFY(!(manager).isCreating());                                                                        \
    QVERIFY((manager).statusIsError());                                                                      \
    QCOMPARE((manager).statusMessage(), text);                                                               \
    QVERIFY((manager).lastOutputURL().isEmpty())

} // namespace

class ArchiveManagerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void publishesInTheStatedOrder() {
        const TestFolder folder;
        const Path file = folder.write("a.txt", "a");
        ArchiveManager manager({.unzip = "/bin/false"});
        Journal journal(manager);
        create(manager, {file}, folder.path() / "Report.zip");
        QCOMPARE(journal.take(), QStringLiteral("busy, Creating archive…, fine, <>, <Report.zip>, "
                                                "Archive created: Report.zip, fine, idle"));
        extract(manager, folder.path() / "Report.zip", folder.path());
        QCOMPARE(journal.take(),
                 QStringLiteral("busy, Extracting…, fine, <>, Archive creation failed., error, idle"));
        create(manager, {file}, folder.path() / "R.tar.gz", ArchiveFormat::tarGz);
        journal.take();
        extract(manager, folder.path() / "R.tar.gz", folder.path());
        QCOMPARE(journal.take(),
                 QStringLiteral("busy, Extracting…, fine, <>, <R>, Extracted to: R/, fine, idle"));
        manager.clearStatus();
        QCOMPARE(journal.take(), QStringLiteral(", fine, <>"));
        QCOMPARE(folder.temporaryItems().size(), 0U);
    }

    void runsTheToolsExactlySo() {
        const TestFolder folder;
        const Recorder recorder(folder);
        ArchiveManager manager(recorder.tools());
        const Path file = folder.write("-x y\"", "");
        struct Writer {
            ArchiveFormat format;
            const char *output;
            const char *line;
            const char *levels;
        };
        const char *dmgLevels = "UDZO|-imagekey|zlib-level=1 UDZO UDBZ";
        const char *dmgLine = "hdiutil: create|-volname|%2|-srcfolder|@|-ov|-format|%1|*/%3";
        for (const Writer &writer : std::initializer_list<Writer>{
                 {ArchiveFormat::zip, "a b.zip", "zip in @: %1|-r|*/%3|-x y\"", "-1 -6 -9"},
                 {ArchiveFormat::tarGz, "o.tar.gz", "tar in @: -czf|*/%3|-x y\" GZIP=%1", "-1 -6 -9"},
                 {ArchiveFormat::sevenZ, "o.7z", "7z in @: a|-t7z|%1|*/%3|-x y\"", "-mx=1 -mx=5 -mx=9"},
                 {ArchiveFormat::rar, "o.rar", "rar in @: a|%1|*/%3|-x y\"", "-m1 -m3 -m5"},
                 {ArchiveFormat::dmg, "my.disk.dmg", dmgLine, dmgLevels},
                 {ArchiveFormat::dmg, "disk", dmgLine, dmgLevels}}) {
            const QString output = QString::fromLatin1(writer.output);
            const QStringList levels = QString::fromLatin1(writer.levels).split(u' ');
            for (const CompressionLevel level : allCases<CompressionLevel>()) {
                create(manager, {file}, folder.path() / writer.output, writer.format, level);
                QCOMPARE(recorder.told(), QString::fromLatin1(writer.line)
                                              .replace(u"%1"_s, levels[static_cast<int>(level)])
                                              .replace(u"%2"_s, output == u"disk" ? output : u"my.disk"_s)
                                              .replace(u"%3"_s, output));
            }
        }
        for (const auto &[archive, line] : {std::pair("some.zip", u"unzip: -o|*/some.zip|-d|*/some"_s),
                                            std::pair("other.TGZ", u"tar: -xf|*/other.TGZ|-C|*/other"_s),
                                            std::pair("a.7z", u"7z: x|*/a.7z|-o*/a|-y"_s),
                                            std::pair("b.rar", u"unrar: x|-o+|*/b.rar|*/b/"_s)}) {
            extract(manager, folder.path() / archive, folder.path());
            QCOMPARE(recorder.told(), line);
        }
    }

    void takesTheOptionalToolsThatAreThere() {
        const TestFolder folder;
        const Recorder recorder(folder);
        ArchiveManager manager(recorder.tools());
        const Path file = folder.write("a", "");
        recorder.uninstall("7z");
        recorder.uninstall("unrar");
        create(manager, {file}, folder.path() / "o.7z", ArchiveFormat::sevenZ);
        QCOMPARE(recorder.told(), u"7za in @: a|-t7z|-mx=5|*/o.7z|a"_s);
        extract(manager, folder.path() / "x.7z", folder.path());
        QCOMPARE(recorder.told(), u"7za: x|*/x.7z|-o*/x|-y"_s);
        extract(manager, folder.path() / "y.rar", folder.path());
        QCOMPARE(recorder.told(), u"rar: x|-o+|*/y.rar|*/y/"_s);

        recorder.uninstall("7za");
        recorder.uninstall("rar");
        extract(manager, folder.path() / "none.7z", folder.path());
        COMPARE_FAILURE(manager, u"'7z' not found. Install it with: brew install p7zip"_s);
        QVERIFY(std::filesystem::is_empty(folder.path() / "none"));
        extract(manager, folder.path() / "none.rar", folder.path());
        COMPARE_FAILURE(manager, u"'unrar' not found. Install it with: brew install rar"_s);
        QVERIFY(std::filesystem::is_empty(folder.path() / "none_1"));
        create(manager, {file}, folder.write("old.7z", ""), ArchiveFormat::sevenZ);
        COMPARE_FAILURE(manager, u"'7z' not found. Install it with: brew install p7zip"_s);
        QVERIFY(!std::filesystem::exists(folder.path() / "old.7z"));
        folder.writeTool("bin/unrar", "exit 0"); // it cannot create
        create(manager, {file}, folder.path() / "o.rar", ArchiveFormat::rar);
        COMPARE_FAILURE(manager, u"'rar' not found. Install it with: brew install rar"_s);
        QCOMPARE(folder.temporaryItems().size(), 0U);
    }

    void numbersEqualNames() {
        const TestFolder folder;
        std::vector<Path> files;
        for (const char *parent : {"1/", "2/", "3/"}) {
            for (const char *name : {"notes.txt", "a", "archive.tar.gz", ".hidden", "notes_1.txt"}) {
                files.push_back(folder.write(std::string(parent) + name, parent));
            }
        }
        std::filesystem::create_directory(folder.path() / "1/Photos");
        files.insert(files.end(), 2, folder.path() / "1/Photos");
        const Path stage = stageFiles(files);
        QStringList names;
        for (const auto &[name, line] : snapshot(stage)) {
            names += QString::fromStdString(name);
        }
        QCOMPARE(
            names.join(u' '),
            u". .hidden .hidden_1 .hidden_2 Photos Photos_1 a a_1 a_2 archive.tar.gz archive.tar_1.gz "
            "archive.tar_2.gz notes.txt notes_1.txt notes_1_1.txt notes_1_2.txt notes_2.txt notes_3.txt"_s);
#ifndef __APPLE__ // where others do not get as far
        struct stat info {};
        QVERIFY(::stat(stage.c_str(), &info) == 0 && (info.st_mode & 0777) == 0700);
#endif
    }

    void replacesWhatIsAtTheOutputPath() {
        const TestFolder folder;
        const Path file = folder.write("a.txt", "new");
        const Path outside = folder.write("outside", "kept");
        const Path output = folder.write("out.zip/old", "a folder");
        ArchiveManager manager;
        create(manager, {file}, output.parent_path());
        QVERIFY2(!manager.statusIsError(), qPrintable(manager.statusMessage()));
        std::filesystem::remove(folder.path() / "out.zip");
        std::filesystem::create_symlink(outside, folder.path() / "out.zip");
        create(manager, {file}, folder.path() / "out.zip");
        QVERIFY(std::filesystem::is_regular_file(std::filesystem::symlink_status(folder.path() / "out.zip")));
        QCOMPARE(readFile(outside), "kept");

        ArchiveManager failing({.zip = "/bin/false"});
        create(failing, {file}, folder.path() / "out.zip");
        COMPARE_FAILURE(failing, u"Archive creation failed."_s);
        QVERIFY(!std::filesystem::exists(folder.path() / "out.zip"));
        QCOMPARE(folder.temporaryItems().size(), 0U);
    }

    void neverRemovesAnInput() {
        const TestFolder folder;
        const Path file = folder.write("in/a.zip", "precious");
        std::filesystem::create_directory_symlink("in", folder.path() / "alias");
        ArchiveManager manager;
        const QString reason =
            u" couldn’t be removed because it is, or holds, one of the items to archive."_s;
        create(manager, {file}, file);
        COMPARE_FAILURE(manager, u"The file “a.zip”"_s + reason);
        create(manager, {file}, folder.path() / "alias/a.zip");
        COMPARE_FAILURE(manager, u"The file “a.zip”"_s + reason);
        create(manager, {file}, folder.path() / "in");
        COMPARE_FAILURE(manager, u"The folder “in”"_s + reason);
        QCOMPARE(readFile(file), "precious");
        std::filesystem::create_symlink("in/a.zip", folder.path() / "latest");
        create(manager, {folder.path() / "latest"}, file);
        COMPARE_FAILURE(manager, u"The file “a.zip”"_s + reason);
        create(manager, {folder.path() / "in"}, folder.path() / "in/b.zip");
        QVERIFY2(!manager.statusIsError(), qPrintable(manager.statusMessage()));
    }

    void leavesWhatItsTableSays() {
        const TestFolder folder;
        const Path file = folder.write("a.txt", "a");
        const Path old = folder.write("old.zip", "old");
        ArchiveManager manager;
        create(manager, {file, folder.path() / "vanished.txt"}, old);
        COMPARE_FAILURE(manager,
                        u"The file “vanished.txt” couldn’t be opened because there is no such file."_s);
        QVERIFY(!std::filesystem::exists(old));
        QCOMPARE(folder.temporaryItems("Crateloom-").size(), 1U);
        QCOMPARE(folder.temporaryItems().front().size(), 10U + 36U);

        create(manager, {}, folder.path() / "empty.zip");
        QVERIFY(manager.statusIsError() && manager.statusMessage().contains(u"Nothing to do"));
        create(manager, {file}, folder.path() / "missing/out.zip");
        QVERIFY(manager.statusIsError() && !manager.isCreating() && !manager.statusMessage().isEmpty());
        create(manager, {file}, folder.path() / "missing/out.tar.gz", ArchiveFormat::tarGz);
        QVERIFY(manager.statusIsError() && manager.statusMessage().contains(u"No such file"));
        QCOMPARE(folder.temporaryItems("Crateloom-").size(), 1U);

        std::filesystem::remove_all(folder.temporary());
        folder.write("tmp", "no folder");
        create(manager, {file}, folder.path() / "out.zip");
        QVERIFY(manager.statusIsError() && manager.statusMessage().contains(u"isn’t a folder"));
        extract(manager, file, folder.path());
        std::filesystem::remove(folder.temporary());
        create(manager, {file}, folder.path() / "out.zip");
        QVERIFY(std::filesystem::is_directory(folder.temporary())); // it was made
        QVERIFY2(!manager.statusIsError(), qPrintable(manager.statusMessage()));
    }

    void saysWhatIsWrongWithAnArchive() {
        const TestFolder folder;
        const Path output = folder.path() / "out";
        ArchiveManager manager;
        const auto message = [&](const Path &archive) {
            extract(manager, archive, output);
            return manager.isCreating() || !manager.statusIsError() || !manager.lastOutputURL().isEmpty()
                       ? u"no failure"_s
                       : manager.statusMessage();
        };
        QCOMPARE(message(folder.write("data.tar.bz2", "x")), u"Unsupported format: .bz2"_s);
        QCOMPARE(message(folder.write("backup.tar", "x")), u"Unsupported format: .tar"_s);
        QCOMPARE(message(folder.write("README", "x")), u"Unsupported format: ."_s);
        QVERIFY(message(folder.write("damaged.zip", someText(5000))).contains(u"End-of-central-directory"));
        QVERIFY(message(folder.write("notes.txt.gz", "plain")).contains(u"tar:"));
        QVERIFY(message(folder.path() / "gone.zip").contains(u"gone.zip"));
        for (const char *made : {"data", "backup", "README", "damaged", "notes.txt", "gone"}) {
            QVERIFY2(std::filesystem::is_directory(output / made), made);
        }
        folder.write("secret.txt", "secret");
        QCOMPARE(failure(shell("/usr/bin/zip", {"-qP", "key", "locked.zip", "secret.txt"}, folder.path())),
                 QString());
        QVERIFY(message(folder.path() / "locked.zip").contains(u"unable to get password"));
        create(manager, {folder.path() / "secret.txt"}, folder.path() / "cut.tar.gz", ArchiveFormat::tarGz);
        std::filesystem::resize_file(folder.path() / "cut.tar.gz", 60);
        QVERIFY(message(folder.path() / "cut.tar.gz").contains(u"unexpected end of file"));
        QCOMPARE(folder.temporaryItems().size(), 0U);

        const std::optional<Path> sevenZip = Tools().findTool("7z");
        if (!sevenZip) {
            QSKIP("7z is not installed");
        }
        for (const char *option : {"-mhe=off", "-mhe=on"}) { // the names locked too
            const std::string name = std::string("locked") + option + ".7z";
            QCOMPARE(failure(shell(*sevenZip, {"a", "-pX", option, name, "secret.txt"}, folder.path())),
                     QString());
            QVERIFY(message(folder.path() / name).contains(u"Enter password"));
        }
        QVERIFY(message(folder.write("random.7z", someText(5000))).contains(u"Cannot open the file"));
        const Path damaged = folder.path() / "damaged.7z";
        create(manager, {folder.write("text", someText(5000))}, damaged, ArchiveFormat::sevenZ);
        QByteArray bytes = readFile(damaged);
        bytes.replace(500, 50, QByteArray(50, 'x'));
        QVERIFY(message(folder.write("damaged.7z", bytes)).contains(u"Data Error : text"));
    }

    void clearsTheStatusOfARunningOperation() {
        const TestFolder folder;
        const Path file = folder.write("a.txt", "a");
        ArchiveManager manager({.zip = folder.writeTool("slow", "sleep 0.3; echo done >&2; exit 7")});
        auto running = manager.createArchive(urls({file}), ArchiveFormat::zip, CompressionLevel::fast,
                                             fileUrl(folder.path() / "o.zip"));
        QVERIFY(manager.isCreating());
        manager.clearStatus();
        QVERIFY(manager.isCreating() && manager.statusMessage().isEmpty());
        QCoro::waitFor(std::move(running));
        COMPARE_FAILURE(manager, u"done"_s);
    }

    void mayDieWhileItRuns() {
        const TestFolder folder;
        const Path file = folder.write("a.txt", "a");
        auto manager = std::make_unique<ArchiveManager>(Tools{.zip = folder.writeTool("slow", "sleep 0.2")});
        auto running = manager->createArchive(urls({file}), ArchiveFormat::zip, CompressionLevel::fast,
                                              fileUrl(folder.path() / "o.zip"));
        manager.reset();
        QCoro::waitFor(std::move(running));
        QCOMPARE(folder.temporaryItems().size(), 0U);
    }
};

QTEST_GUILESS_MAIN(ArchiveManagerTest)
#include "archive_manager_test.moc"
