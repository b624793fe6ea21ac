#include "archive/extraction.h"
#include "support/failure.h"
#include "support/test_folder.h"

#include <QTest>

using namespace stowlark;

class ExtractionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void choosesFolderNameAndExtractor_data() {
        QTest::addColumn<QByteArray>("archive");
        QTest::addColumn<QByteArray>("folder");
        QTest::addColumn<int>("extractor");
        const auto row = [](const char *archive, const char *folder, Extractor extractor) {
            QTest::newRow(archive) << QByteArray(archive) << QByteArray(folder)
                                   << static_cast<int>(extractor);
        };
        row("Archive.ZIP", "Archive", Extractor::unzip);
        row("a.b.zip", "a.b", Extractor::unzip);
        row("Photos.tar.gz", "Photos", Extractor::untar);
        row("Photos.TAR.GZ", "Photos", Extractor::untar);
        row("x.tgz", "x", Extractor::untar);
        row("notes.txt.gz", "notes.txt", Extractor::untar);
        row("data.tar.bz2", "data", Extractor::none);
        row("backup.tar", "backup", Extractor::none);
        row("README", "README", Extractor::none);
        row(".zip", ".zip", Extractor::none);
        row(".tar.gz", ".tar", Extractor::untar);
        row("..zip", "..zip", Extractor::none);
        row("a.tar.7z", "a.tar", Extractor::sevenZip);
        row("a.RAR", "a", Extractor::rar);
        row("a.dmg", "a", Extractor::dmg);
        row("\xff.zip", "\xff", Extractor::unzip);
    }
    void choosesFolderNameAndExtractor() {
        QFETCH(QByteArray, archive);
        QTEST(QByteArray::fromStdString(extractionFolderName(archive.toStdString())), "folder");
        QTEST(static_cast<int>(extractorFor(archive.toStdString())), "extractor");
    }

    void avoidsWhatIsThere() {
        const TestFolder folder;
        const Path output = folder.path() / "not/yet/there";
        QCOMPARE(createExtractionFolder(output, "Photos"), output / "Photos");
        QCOMPARE(createExtractionFolder(output, "Photos"), output / "Photos_1");
        folder.write("not/yet/there/Photos_2", "a file");
        std::filesystem::create_symlink("nowhere", output / "Photos_3");
        QCOMPARE(createExtractionFolder(output, "Photos"), output / "Photos_4");
    }

    void saysWhyThereIsNoFolder() {
        const TestFolder folder;
        const Path file = folder.write("file", "x");
        const auto create = [](const Path &output, const std::string &name) {
            return failure([&] { createExtractionFolder(output, name); });
        };
        QCOMPARE(create(file / "below", "x"),
                 QStringLiteral(
                     "The folder “below” couldn’t be created because a part of its path isn’t a folder."));
        const QString longName(300, u'n');
        QCOMPARE(create(folder.path(), longName.toStdString()),
                 QStringLiteral("The folder “%1” couldn’t be created because its name or path is too long.")
                     .arg(longName));
    }
};

QTEST_GUILESS_MAIN(ExtractionTest)
#include "extraction_test.moc"
