#include "support/operations.h"
#include "support/snapshot.h"
#include "support/test_folder.h"

#include <QProcess>
#include <QTest>

#include <chrono>

using namespace Qt::StringLiterals;
using namespace stowlark;

namespace {

std::vector<std::string> oddNames() {
    return {" leading space",
            "trailing space ",
            "  ",
            "--double",
            "-",
            "-rf",
            "@list",
            "a@b",
            "[abc]",
            "a[0-9]",
            "100%",
            "%s%n",
            "*",
            "a*b?",
            "~",
            "~root",
            "\"quotes\"",
            "it's",
            "back\\slash",
            "a\nb",
            "tab\there",
            "\u00e9 composed",
            "e\u0301 decomposed",
            "\U0001F600.txt",
            "\u65e5\u672c\u8a9e",
            std::string(255, 'n'),
            ".hidden",
            "..x",
            "...",
            "noextension",
            "a.b.c.d",
            "ends.",
            "$HOME",
            "a;b",
            "a|b",
            "a&b",
            "<x>",
            "C:\\x",
            "#x",
            "!x",
            "{a,b}",
            "=x",
            "\x01\x7f",
            "\xff\xfe raw"};
}

using Outcomes = std::map<std::string, std::string>;

/// What the tools make of names that they cannot carry; all others come back as they were. A name that begins
/// with a dash is an option to them, and "-" is zip's standard input. unzip takes control characters out of
/// names and rewrites what is no UTF-8. To 7z, a name that begins with "@" is that of a list of names.
const Outcomes zipOutcomes{{"-", "comes back empty"},
                           {"--double", "create fails"},
                           {"-rf", "create fails"},
                           {"a\nb", "comes back as another"},
                           {"tab\there", "comes back as another"},
                           {"\x01\x7f", "comes back as another"},
                           {"\xff\xfe raw", "comes back as another"}};
const Outcomes tarOutcomes{{"--double", "create fails"}, {"-rf", "create fails"}};
const Outcomes sevenZipOutcomes{
    {"-", "create fails"}, {"--double", "create fails"}, {"-rf", "create fails"}, {"@list", "create fails"}};
/// A disk image stores decomposed names, of which it is not known how they were, and hidden items at its top
/// are not unpacked.
const Outcomes diskImageOutcomes{{".hidden", "is left out"},
                                 {"..x", "is left out"},
                                 {"...", "is left out"},
                                 {"e\u0301 decomposed", "comes back as another"},
                                 {"\xff\xfe raw", "create fails"}};

/// One row for each format whose tool is there.
void addFormats() {
    QTest::addColumn<ArchiveFormat>("format");
    QTest::addColumn<QByteArray>("archive");
    for (const InstalledFormat &installed : installedFormats()) {
        if (installed.format != ArchiveFormat::rar) {
            QTest::newRow(installed.name) << installed.format << QByteArray::fromStdString(installed.archive);
        }
    }
}

} // namespace

/// Each name through an archive and back: the file at the top, and all in a folder, where none is an option.
class OddNamesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qputenv("LC_ALL", "C.UTF-8"); }

    void comeBackByteForByte_data() { addFormats(); }
    void comeBackByteForByte() {
        QFETCH(ArchiveFormat, format);
        QFETCH(QByteArray, archive);
        const Outcomes &expected = format == ArchiveFormat::zip     ? zipOutcomes
                                   : format == ArchiveFormat::tarGz ? tarOutcomes
                                   : format == ArchiveFormat::dmg   ? diskImageOutcomes
                                                                    : sevenZipOutcomes;
        const TestFolder folder;
        const Path in = folder.path() / "in";
        for (const std::string &name : oddNames()) {
            folder.write(Path("in") / name, QByteArray::fromStdString("contents of " + name));
        }
        const auto send = [&](const Path &item) {
            return outcome(item, format, folder.path() / archive.toStdString());
        };
        for (const std::string &name : oddNames()) {
            const auto known = expected.find(name);
            const std::string as = known == expected.end() ? "comes back" : known->second;
            QCOMPARE(displayText(name + ' ' + send(in / name)), displayText(name + ' ' + as));
        }
        for (const auto &[name, as] : expected) {
            if (std::string_view("-@.").find(name.front()) == std::string_view::npos) {
                std::filesystem::remove(in / name);
            }
        }
        QCOMPARE(send(in), std::string("comes back"));
    }

    /// Names of archives, and of folders, which a tool may take for patterns of what lies beside them.
    void comeBackFromArchivesNamedLikePatterns_data() { addFormats(); }
    void comeBackFromArchivesNamedLikePatterns() {
        QFETCH(ArchiveFormat, format);
        QFETCH(QByteArray, archive);
        const TestFolder folder;
        const Path in = folder.write("in/file", "contents").parent_path();
        const Path at = folder.path() / "d*[1]?";
        std::filesystem::create_directories(at);
        std::filesystem::create_directory(folder.path() / "dx1y");
        for (const std::string name : {"ab", "a", "a*", "a?", "[a]", "\\[a]", "@[*", "-*"}) {
            QCOMPARE(name + ' ' + outcome(in, format, at / (name + archive.toStdString().substr(1))),
                     name + " comes back");
            folder.write("in/file", "contents of the next after " + QByteArray::fromStdString(name));
        }
        QVERIFY(std::filesystem::is_empty(folder.path() / "dx1y"));
    }

    /// But 7z lets the owner write to every folder.
    void comeBackWithModesAndTimes_data() { addFormats(); }
    void comeBackWithModesAndTimes() {
        QFETCH(ArchiveFormat, format);
        QFETCH(QByteArray, archive);
        const TestFolder folder;
        const Path file = folder.write("in/folder/file", "contents");
        const Path other = folder.write("in/other", "contents");
        std::filesystem::create_directory(folder.path() / "in/empty");
        std::filesystem::permissions(file, std::filesystem::perms(0751));
        std::filesystem::permissions(other, std::filesystem::perms(0400));
        std::filesystem::permissions(file.parent_path(),
                                     std::filesystem::perms(format == ArchiveFormat::sevenZ ? 0710 : 0500));
        const auto time = std::chrono::floor<std::chrono::seconds>(std::filesystem::last_write_time(file)) -
                          std::chrono::hours(10'000);
        for (const char *item : {"in/folder/file", "in/other", "in/folder", "in/empty", "in"}) {
            std::filesystem::last_write_time(folder.path() / item, time);
        }
        QCOMPARE(outcome(folder.path() / "in", format, folder.path() / archive.toStdString(), {}),
                 std::string("comes back"));
    }

    void comeBackIfTheyAreMany_data() { addFormats(); }
    void comeBackIfTheyAreMany() {
        QFETCH(ArchiveFormat, format);
        QFETCH(QByteArray, archive);
        const TestFolder folder;
        for (int i = 0; i < 2'000; ++i) {
            folder.write(Path("in") / std::to_string(i % 100) / std::to_string(i), QByteArray::number(i));
        }
        QCOMPARE(outcome(folder.path() / "in", format, folder.path() / archive.toStdString()),
                 std::string("comes back"));
    }

    /// tar keeps links; zip stores what they point to, and leaves out in silence what points nowhere. 7z of
    /// p7zip keeps those that stay inside, and refuses to unpack any that lead up; others do as zip, but with
    /// a warning.
    void comeBackIfTheyAreLinks() {
        const TestFolder folder;
        folder.write("in/file", "contents");
        std::filesystem::create_symlink("file", folder.path() / "in/link");
        std::filesystem::create_symlink("nowhere", folder.path() / "in/broken");
        QCOMPARE(outcome(folder.path() / "in", ArchiveFormat::tarGz, folder.path() / "o.tar.gz"),
                 std::string("comes back"));
        QCOMPARE(outcome(folder.path() / "in", ArchiveFormat::zip, folder.path() / "o.zip"),
                 std::string("comes back changed"));
        const Path result = folder.path() / "out/o_1/in";
        QCOMPARE(readFile(result / "link"), "contents");
        QVERIFY(!std::filesystem::is_symlink(result / "link"));
        QVERIFY(!std::filesystem::exists(std::filesystem::symlink_status(result / "broken")));
        if (std::filesystem::exists(Tools().hdiutil)) {
            std::filesystem::create_directory_symlink("in", folder.path() / "in/to a folder");
            std::filesystem::create_symlink("/etc/passwd", folder.path() / "in/absolute");
            std::filesystem::create_symlink("../up", folder.path() / "in/up");
            QCOMPARE(outcome(folder.path() / "in", ArchiveFormat::dmg, folder.path() / "d.dmg"),
                     std::string("comes back"));
            for (const char *link : {"to a folder", "absolute", "up"}) {
                std::filesystem::remove(folder.path() / "in" / link);
            }
        }
        const auto formats = installedFormats();
        const auto sevenZip = std::ranges::find(formats, ArchiveFormat::sevenZ, &InstalledFormat::format);
        if (sevenZip == formats.end()) {
            QSKIP("7z is not installed");
        }
        const Path archive = folder.path() / "o.7z";
        if (sevenZip->followsLinks) {
            QCOMPARE(outcome(folder.path() / "in", ArchiveFormat::sevenZ, archive),
                     std::string("create fails"));
            std::filesystem::remove(folder.path() / "in/broken");
            QCOMPARE(outcome(folder.path() / "in", ArchiveFormat::sevenZ, archive),
                     std::string("comes back changed"));
        }
        const auto unpacked = [&](const char *name, const Path &target) {
            const Path links = folder.path() / name;
            std::filesystem::create_directory(links);
            folder.write(links / "file", "contents");
            std::filesystem::create_symlink(target, links / "link");
            const Path made = folder.path() / "links.7z";
            std::filesystem::remove(made);
            QProcess tool;
            tool.setWorkingDirectory(displayText(folder.path().native()));
            tool.start(displayText(Tools().findTool("7z")->native()),
                       {u"a"_s, u"-snl"_s, displayText(made.native()), QString::fromLatin1(name)});
            tool.waitForFinished();
            ArchiveManager manager;
            extract(manager, made, folder.path() / "unpacked");
            const Path link = path(manager.lastOutputURL()) / name / "link";
            return manager.statusIsError() ? "fails" : std::filesystem::read_symlink(link).native();
        };
        QCOMPARE(unpacked("beside", "file"), std::string("file"));
        QCOMPARE(unpacked("absolute", "/etc/passwd"),
                 (folder.path() / "unpacked/links_1/etc/passwd").native());
        QCOMPARE(unpacked("up", "../up"), std::string("fails"));
    }

private:
    static std::string outcome(const Path &item, ArchiveFormat format, const Path &archive,
                               SnapshotOptions options = {.times = false}) {
        ArchiveManager manager;
        create(manager, {item}, archive, format, CompressionLevel::fast);
        if (manager.statusIsError()) {
            return "create fails";
        }
        extract(manager, archive, archive.parent_path() / "out");
        if (manager.statusIsError()) {
            return "extract fails";
        }
        const Path result = path(manager.lastOutputURL());
        if (difference(snapshot(item, options), snapshot(result / item.filename(), options)).isEmpty()) {
            return "comes back";
        }
        if (std::filesystem::is_directory(item)) {
            return "comes back changed";
        }
        const auto entries = std::filesystem::directory_iterator(result);
        if (entries == std::filesystem::directory_iterator()) {
            return "is left out";
        }
        const QByteArray contents = readFile(entries->path());
        return contents.isEmpty()           ? "comes back empty"
               : contents == readFile(item) ? "comes back as another"
                                            : "is damaged";
    }
};

QTEST_GUILESS_MAIN(OddNamesTest)
#include "odd_names_test.moc"
