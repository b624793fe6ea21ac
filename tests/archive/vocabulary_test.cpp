#include "archive/archive_error.h"
#include "archive/archive_format.h"
#include "archive/compression_level.h"
#include "archive/tools.h"
#include "support/test_folder.h"

#include <QTest>

using namespace stowlark;

class VocabularyTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void listsFormatsAndLevelsInOrder() {
        QStringList labels;
        for (const ArchiveFormat format : allCases<ArchiveFormat>()) {
            labels += rawValue(format);
            QCOMPARE(fromRawValue<ArchiveFormat>(labels.last()), std::optional(format));
        }
        QCOMPARE(labels.join(u'|'), QStringLiteral("ZIP|TAR.GZ|7-Zip (.7z)|RAR|DMG (macOS)"));
        labels.clear();
        for (const CompressionLevel level : allCases<CompressionLevel>()) {
            labels += rawValue(level);
        }
        QCOMPARE(labels.join(u'|'), QStringLiteral("Fast|Normal|Best (Slow)"));
        for (const QString &text :
             {QStringLiteral("zip"), QStringLiteral("7-Zip"), QStringLiteral("ZIP "), QString()}) {
            QVERIFY(!fromRawValue<ArchiveFormat>(text));
        }
        QVERIFY(!fromRawValue<CompressionLevel>(QStringLiteral("best")));
    }

    void describesErrors() {
        QCOMPARE(ArchiveError::toolNotFound(QStringLiteral("7z"), QStringLiteral("brew install p7zip"))
                     .errorDescription(),
                 QStringLiteral("'7z' not found. Install it with: brew install p7zip"));
        QCOMPARE(ArchiveError::commandFailed(QStringLiteral("a\nb")).errorDescription(),
                 QStringLiteral("a\nb"));
        QCOMPARE(ArchiveError::commandFailed({}).errorDescription(),
                 QStringLiteral("Archive creation failed."));
        QCOMPARE(ArchiveError::noFiles().errorDescription(), QStringLiteral("No files selected."));
        QCOMPARE(localizedDescription(ArchiveError::noFiles()), QStringLiteral("No files selected."));
        QCOMPARE(localizedDescription(std::bad_alloc()),
                 QStringLiteral("The operation couldn’t be completed (std::bad_alloc)."));
    }

    void findsToolsInOrder() {
        const TestFolder folder;
        const std::string first = folder.path() / "first/";
        const std::string second = folder.path() / "second/";
        const Path marks = folder.path() / "marks";
        const Tools tools{
            .xattr = folder.writeTool("xattr", "echo \"$*\" >> " + QByteArray::fromStdString(marks.native())),
            .searchFolders = {first, second}};
        QVERIFY(!tools.findTool("7z"));
        QVERIFY(!std::filesystem::exists(marks));
        QCOMPARE(tools.toolWarning(ArchiveFormat::sevenZ),
                 std::optional(QStringLiteral("'7z' not installed. Run: brew install p7zip")));
        QCOMPARE(tools.toolWarning(ArchiveFormat::rar),
                 std::optional(QStringLiteral("'rar' not installed. Run: brew install rar")));
        for (const ArchiveFormat format : {ArchiveFormat::zip, ArchiveFormat::tarGz, ArchiveFormat::dmg}) {
            QVERIFY(!tools.toolWarning(format));
        }
        folder.write("second/7za", "");
        QVERIFY(tools.toolWarning(ArchiveFormat::sevenZ)); // only "7z" counts
        folder.write("second/7z", "");
        QCOMPARE(tools.findTool("7z"), std::optional<Path>(second + "7z"));
        std::filesystem::create_directories(first + "7z"); // whatever it is
        QCOMPARE(tools.findTool("7z"), std::optional<Path>(first + "7z"));
        QVERIFY(!tools.toolWarning(ArchiveFormat::sevenZ));
        QCOMPARE(readFile(marks).toStdString(), "-d com.apple.quarantine " + second +
                                                    "7z\n-d com.apple.quarantine " + first +
                                                    "7z\n-d com.apple.quarantine " + first + "7z\n");
    }

    void goesWithoutXattr() {
        const TestFolder folder;
        folder.write("rar", "");
        const Tools tools{.xattr = "/none/xattr", .searchFolders = {folder.path() / ""}};
        QCOMPARE(tools.findTool("rar"), std::optional<Path>(folder.path() / "rar"));
    }

    void searchesTheFourFoldersByDefault() {
        const std::vector<std::string> folders{"/opt/homebrew/bin/", "/usr/local/bin/", "/usr/bin/", "/bin/"};
        QCOMPARE(Tools().searchFolders, folders);
    }
};

QTEST_GUILESS_MAIN(VocabularyTest)
#include "vocabulary_test.moc"
