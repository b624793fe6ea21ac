#include "foundation/file_url.h"

#include <QTest>

using namespace stowlark;

class PathNameTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void splitsNames_data() {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QByteArray>("base");
        QTest::addColumn<QByteArray>("extension");
        const auto row = [](const char *name, const char *base, const char *extension) {
            QTest::newRow(name) << QByteArray(name) << QByteArray(base) << QByteArray(extension);
        };
        row("a.zip", "a", "zip");
        row("a.b.zip", "a.b", "zip");
        row("a", "a", "");
        row("a.", "a.", "");
        row(".hidden", ".hidden", "");
        row(".hidden.txt", ".hidden", "txt");
        row("..x", "..x", "");
        row("..x.zip", "..x.zip", "");
        row("a..zip", "a.", "zip");
        row("\xff.\xfe", "\xff", "\xfe");
    }
    void splitsNames() {
        QFETCH(QByteArray, name);
        QTEST(QByteArray::fromStdString(deletingPathExtension(name.toStdString())), "base");
        QTEST(QByteArray::fromStdString(pathExtension(name.toStdString())), "extension");
    }

    void findsTheLastComponentAndTheFolder() {
        QCOMPARE(lastPathComponent("/a/b.c"), std::string("b.c"));
        QCOMPARE(lastPathComponent("/a/b//"), std::string("b"));
        QCOMPARE(lastPathComponent("/"), std::string("/"));
        QCOMPARE(parentFolder("/a/b//").native(), std::string("/a"));
        QCOMPARE(parentFolder("/a").native(), std::string("/"));
    }

    void carriesEveryByteThroughUrls() {
        std::string bytes = "/";
        for (int byte = 1; byte < 256; ++byte) {
            bytes += static_cast<char>(byte);
        }
        for (const std::string &name :
             {bytes + "x", std::string("/a b/%41/%2F?#[];:@&"), std::string("/\u00e9\U0001F600")}) {
            const QUrl url = fileUrl(name);
            QVERIFY(isFileUrl(url));
            QCOMPARE(path(url).native(), name);
            QCOMPARE(path(QUrl::fromEncoded(url.toEncoded())).native(), name);
        }
        QCOMPARE(path(QUrl(QStringLiteral("file:///a/b/"))).native(), std::string("/a/b"));
    }

    void refusesWhatIsNoFile_data() {
        QTest::addColumn<QUrl>("url");
        for (const char *text : {"", "http://host/a", "a/b", "file:", "file:///a%00b", "text"}) {
            QTest::newRow(text) << QUrl::fromEncoded(text);
        }
    }
    void refusesWhatIsNoFile() {
        QFETCH(QUrl, url);
        QVERIFY(!isFileUrl(url));
    }
};

QTEST_GUILESS_MAIN(PathNameTest)
#include "path_name_test.moc"
