#include "archive/archive_manager.h"
#include "foundation/file_url.h"
#include "support/snapshot.h"
#include "support/test_folder.h"

#include <QCoro/QCoroCore>
#include <QProcess>
#include <QTest>
#include <QtEndian>

using namespace stowlark;

namespace {

quint32 crc32(const QByteArray &bytes) {
    quint32 crc = ~0U;
    for (const char byte : bytes) {
        crc ^= static_cast<quint8>(byte);
        for (int bit = 0; bit < 8; ++bit) {
            crc = (crc >> 1) ^ ((crc & 1) != 0 ? 0xEDB88320U : 0);
        }
    }
    return ~crc;
}

QByteArray littleEndian(quint32 number) {
    QByteArray bytes(4, 0);
    qToLittleEndian(number, bytes.data());
    return bytes;
}

/// Seven bits in each byte, the lowest first; the eighth says that more follow.
QByteArray number(qsizetype value) {
    QByteArray bytes;
    for (; value > 127; value >>= 7) {
        bytes += static_cast<char>(value | 128);
    }
    return bytes + static_cast<char>(value);
}

QByteArray block(const QByteArray &header) {
    const QByteArray checked = number(header.size()) + header;
    return littleEndian(crc32(checked)) + checked;
}

QByteArray entry(const QByteArray &name, bool isFolder, const QByteArray &contents = {}) {
    constexpr int fileHeader = 2;
    constexpr int hasData = 2;
    constexpr int ofUnix = 1;
    QByteArray header = number(fileHeader) + number(hasData) + number(contents.size());
    header += number(isFolder ? 1 : 4) + number(contents.size()) + number(isFolder ? 040755 : 0100644);
    header += isFolder ? QByteArray() : littleEndian(crc32(contents));
    header += number(0) + number(ofUnix) + number(name.size()) + name;
    return block(header) + contents;
}

/// An archive of version 5 whose files are stored as they are.
QByteArray archiveOf(const QByteArray &entries) {
    return QByteArray("Rar!\x1a\x07\x01\x00", 8) + block(number(1) + number(0) + number(0)) + entries +
           block(number(5) + number(0) + number(0));
}

} // namespace

/// With the tools that are installed. The command lines are another test's subject.
class RarTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() {
        const auto unrar = Tools().findTool("unrar");
        QProcess version;
        version.start(unrar ? displayText(unrar->native()) : u"rar"_qs, {u"--version"_qs});
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

    void extractsTheSamples() {
        const Path samples = qEnvironmentVariable("STOWLARK_SAMPLES", QStringLiteral(SAMPLES)).toStdString();
        if (!std::filesystem::exists(samples / "photos.rar")) {
            QSKIP("no samples: STOWLARK_SAMPLES names no folder that holds photos.rar");
        }
        const TestFolder folder;
        const auto copy = [&](const char *name) { return folder.write(name, readFile(samples / name)); };
        const Path photos = extract(copy("photos.rar"));
        QCOMPARE(message(), QString());
        QCOMPARE(readFile(photos / "Photos/run.sh"), "#!/bin/sh\necho hi\n");
        QCOMPARE(crc32(readFile(photos / "Photos/noise.bin")), 0x22A2F68FU);
        QCOMPARE(readFile(photos / "Photos/été/日本.txt").size(), 6);
        extract(copy("locked.rar"));
        QVERIFY(!message().isEmpty());
        extract(copy("damaged.rar"));
        QCOMPARE(!message().isEmpty(), checksContents_);
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
