#include "window/file_display.h"
#include "window/symbol_provider.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace stowlark;

class SymbolsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void goByTheExtension() {
        QCOMPARE(smartIcon("/a/b.c/x.tar.GZ"), u"doc.zipper"_s);
        QCOMPARE(smartIcon("/x.Pdf"), u"doc.richtext"_s);
        QCOMPARE(smartIcon("/x.heic"), u"photo"_s);
        QCOMPARE(smartIcon("/x.tgz"), u"doc.fill"_s);
        QCOMPARE(smartIcon("/a.zip/x"), u"doc.fill"_s);
        QCOMPARE(archiveIcon("/x.tar.gz"), u"shipping.box"_s);
        QCOMPARE(archiveIcon("/x.tar"), u"doc.fill"_s);
        QCOMPARE(archiveIcon("/x.DMG"), u"opticaldiscdrive"_s);
        QCOMPARE(archiveIcon(""), u"doc.fill"_s);
    }

    void areAllDrawn() {
        QSet<QString> names{u"folder.fill"_s};
        for (const char *extension :
             {"zip", "pdf", "png", "mov", "mp3", "py", "gz", "7z", "rar", "dmg", ""}) {
            names << smartIcon(Path("/x.") += extension) << archiveIcon(Path("/x.") += extension);
        }
        static const QRegularExpression use(u"^ *(?:name|symbol): .*"_s, QRegularExpression::MultilineOption);
        static const QRegularExpression quoted(u"\"([^\"]+)\""_s);
        const QDir view(u":/qt/qml/Stowlark/Window"_s);
        for (const QString &name : view.entryList({u"*.qml"_s})) {
            QFile file(view.filePath(name));
            QVERIFY(file.open(QIODevice::ReadOnly));
            for (const auto &line : use.globalMatch(QString::fromUtf8(file.readAll()))) {
                for (const auto &found : quoted.globalMatch(line.captured())) {
                    names << found.captured(1);
                }
            }
        }
        QVERIFY(names.contains(u"gearshape.fill"_s) && names.contains(u"checkmark.circle.fill"_s));
        for (const QString &name : names) {
            const QImage image = SymbolProvider().requestImage(name + u"/20/80ff0000"_s, nullptr, {});
            QVERIFY2(!image.isNull(), qPrintable(name));
            int strongest = 0;
            for (int i = 0; i < 400; ++i) {
                strongest = qMax(strongest, qAlpha(image.pixel(i % 20, i / 20)));
            }
            QVERIFY2(qAbs(strongest - 0x80) < 2, qPrintable(name));
        }
    }
};

QTEST_MAIN(SymbolsTest)
#include "symbols_test.moc"
