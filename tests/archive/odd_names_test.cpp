#include "archive/archive_manager.h"
#include "foundation/file_url.h"
#include "support/snapshot.h"
#include "support/test_folder.h"

#include <QCoro/QCoroCore>
#include <QTest>

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
/// names and rewrites what is no UTF-8.
const Outcomes zipOutcomes{{"-", "comes back empty"},
                           {"--double", "create fails"},
                           {"-rf", "create fails"},
                           {"a\nb", "comes back as another"},
                           {"tab\there", "comes back as another"},
                           {"\x01\x7f", "comes back as another"},
                           {"\xff\xfe raw", "comes back as another"}};
const Outcomes tarOutcomes{{"--double", "create fails"}, {"-rf", "create fails"}};

} // namespace

/// Each name through an archive and back: the file at the top, and all in a folder, where none is an option.
class OddNamesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qputenv("LC_ALL", "C.UTF-8"); }

    void comeBackByteForByte_data() {
        QTest::addColumn<int>("format");
        QTest::addColumn<QByteArray>("archive");
        QTest::newRow("ZIP") << static_cast<int>(ArchiveFormat::zip) << QByteArray("o.zip");
        QTest::newRow("TAR.GZ") << static_cast<int>(ArchiveFormat::tarGz) << QByteArray("o.tar.gz");
    }
    void comeBackByteForByte() {
        QFETCH(int, format);
        QFETCH(QByteArray, archive);
        const Outcomes &expected = format == static_cast<int>(ArchiveFormat::zip) ? zipOutcomes : tarOutcomes;
        const TestFolder folder;
        const Path in = folder.path() / "in";
        for (const std::string &name : oddNames()) {
            folder.write(Path("in") / name, QByteArray::fromStdString("contents of " + name));
        }
        const auto send = [&](const Path &item) {
            return outcome(item, static_cast<ArchiveFormat>(format), folder.path() / archive.toStdString());
        };
        for (const std::string &name : oddNames()) {
            const auto known = expected.find(name);
            const std::string as = known == expected.end() ? "comes back" : known->second;
            QCOMPARE(displayText(name + ' ' + send(in / name)), displayText(name + ' ' + as));
        }
        for (const auto &[name, as] : expected) {
            if (!name.starts_with('-')) {
                std::filesystem::remove(in / name);
            }
        }
        QCOMPARE(send(in), std::string("comes back"));
    }

    /// tar keeps links; zip stores what they point to, and leaves out in silence what points nowhere.
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
    }

private:
    static std::string outcome(const Path &item, ArchiveFormat format, const Path &archive) {
        ArchiveManager manager;
        QCoro::waitFor(
            manager.createArchive({fileUrl(item)}, format, CompressionLevel::fast, fileUrl(archive)));
        if (manager.statusIsError()) {
            return "create fails";
        }
        QCoro::waitFor(manager.extractArchive(fileUrl(archive), fileUrl(archive.parent_path() / "out")));
        if (manager.statusIsError()) {
            return "extract fails";
        }
        const Path result = path(manager.lastOutputURL());
        const SnapshotOptions options{.times = false};
        if (difference(snapshot(item, options), snapshot(result / item.filename(), options)).isEmpty()) {
            return "comes back";
        }
        if (std::filesystem::is_directory(item)) {
            return "comes back changed";
        }
        const auto entries = std::filesystem::directory_iterator(result);
        const QByteArray contents = readFile(entries->path());
        return contents.isEmpty()           ? "comes back empty"
               : contents == readFile(item) ? "comes back as another"
                                            : "is damaged";
    }
};

QTEST_GUILESS_MAIN(OddNamesTest)
#include "odd_names_test.moc"
