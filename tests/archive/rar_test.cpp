#include "archive/archive_manager.h"
#include "foundation/file_url.h"
#include "support/rar_writer.h"
#include "support/snapshot.h"
#include "support/test_folder.h"

#include <QCoro/QCoroCore>
#include <QProcess>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace stowlark;

namespace {

using rar::archiveOf;

QByteArray entry(const QByteArray &name, bool isFolder, const QByteArray &contents = {}) {
    return rar::entry(name, isFolder ? 040755 : 0100644, contents);
}

} // namespace

/// With the tools that are installed. The command lines are another test's subject.
class RarTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() {
        const auto unrar = Tools().findTool("unrar");
        QProcess version;
        version.start(unrar ? displayText(unrar->native()) : u"rar"_s, {u"--version"_s});
        version.waitForFinished();
        checksContents_ = !version.readAll().contains("unrar-free");
        if (!unrar && !Tools().findTool("rar")) {
            QSKIP("neither unrar nor rar is installed");
        }
        qInfo("extracting with %s", !unrar ? "rar" : checksContents_ ? "unrar" : "unrar-free");
    }

    void extracts() {
        const TestFolder folder;
        const QByteArray text = someText(3000);
        const Path archive = folder.write(
            "a b.rar", archiveOf(entry("top", false, "1") + entry("-rf", false, "2") +
                                 entry("folder/ünïcödé/日本.txt", false, text) + entry("folder/empty", true) +
                                 entry("folder/ünïcödé", true) + entry("folder", true)));
        const Path result = extract(archive);
        QCOMPARE(message(), QString());
        QCOMPARE(snapshot(result).size(), 7U);
        QCOMPARE(readFile(result / "top"), "1");
        QCOMPARE(readFile(result / "-rf"), "2");
        QCOMPARE(readFile(result / "folder/ünïcödé/日本.txt"), text);
        QVERIFY(std::filesystem::is_directory(result / "folder/empty"));
    }

    void staysInItsFolder() {
        const TestFolder folder;
        const QByteArray absolute = QByteArray::fromStdString((folder.path() / "absolute").native());
        extract(folder.write("in/up.rar", archiveOf(entry("../../up", false, "x"))));
        extract(folder.write("in/absolute.rar", archiveOf(entry(absolute, false, "x"))));
        QVERIFY(!std::filesystem::exists(folder.path() / "up"));
        QVERIFY(!std::filesystem::exists(folder.path() / "absolute"));
    }

    void saysThatAnArchiveIsDamaged() {
        const TestFolder folder;
        const QByteArray whole = archiveOf(entry("a", false, "1") + entry("b", false, someText(3000)));
        extract(folder.write("cut.rar", whole.chopped(500)));
        QVERIFY(!message().isEmpty());
        extract(folder.write("random.rar", someText(3000)));
        QVERIFY(!message().isEmpty());
        QByteArray changed = whole;
        changed.replace(changed.size() - 100, 9, "differing");
        extract(folder.write("changed.rar", changed));
        QCOMPARE(!message().isEmpty(), checksContents_); // unrar-free takes any stored contents
    }

    void createsWhatItExtracts() {
        if (!Tools().findTool("rar")) {
            QSKIP("rar is not installed: creating is tested with a fake only");
        }
        const TestFolder folder;
        folder.write("in/folder/日本.txt", someText(3000));
        const QUrl archive = fileUrl(folder.path() / "o.rar");
        QCoro::waitFor(manager_.createArchive({fileUrl(folder.path() / "in")}, ArchiveFormat::rar,
                                              CompressionLevel::best, archive));
        QCOMPARE(message(), QString());
        const Path result = extract(folder.path() / "o.rar");
        QCOMPARE(message(), QString());
        QCOMPARE(readFile(result / "in/folder/日本.txt"), someText(3000));
    }

private:
    Path extract(const Path &archive) {
        QCoro::waitFor(manager_.extractArchive(fileUrl(archive), fileUrl(archive.parent_path())));
        return path(manager_.lastOutputURL());
    }
    QString message() const { return manager_.statusIsError() ? manager_.statusMessage() : QString(); }

    ArchiveManager manager_;
    bool checksContents_ = true;
};

QTEST_GUILESS_MAIN(RarTest)
#include "rar_test.moc"
