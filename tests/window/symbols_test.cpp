#include "window/file_display.h"
#include "window/symbol_provider.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QTest>

using namespace stowlark;

class SymbolsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void goByTheExtension() {
        QCOMPARE(smartIcon("/a/b.c/x.tar.GZ"), u"doc.zipper"_qs);
        QCOMPARE(smartIcon("/x.Pdf"), u"doc.richtext"_qs);
        QCOMPARE(smartIcon("/x.heic"), u"photo"_qs);
        QCOMPARE(smartIcon("/x.tgz"), u"doc.fill"_qs);
        QCOMPARE(smartIcon("/a.zip/x"), u"doc.fill"_qs);
        QCOMPARE(archiveIcon("/x.tar.gz"), u"shipping.box"_qs);
        QCOMPARE(archiveIcon("/x.tar"), u"doc.fill"_qs);
        QCOMPARE(archiveIcon("/x.DMG"), u"opticaldiscdrive"_qs);
        QCOMPARE(archiveIcon(""), u"doc.fill"_qs);
    }

    void areAllDrawn() {
        QSet<QString> names{u"folder.fill"_qs};
        for (const char *extension :
             {"zip", "pdf", "png", "mov", "mp3", "py", "gz", "7z", "rar", "dmg", ""}) {
            names << smartIcon(Path("/x.") += extension) << archiveIcon(Path("/x.") += extension);
        }
        static const QRegularExpression use(u"^ *(?:name|symbol): .*"_qs,
                                            QRegularExpression::MultilineOption);
        static const QRegularExpression quoted(u"\"([^\"]+)\""_qs);
        const QDir view(u":/qt/qml/Stowlark/Window"_qs);
        for (const QString &name : view.entryList({u"*.qml"_qs})) {
            QFile file(view.filePath(name));
            QVERIFY(file.open(QIODevice::ReadOnly));
            for (const auto &line : use.globalMatch(QString::fromUtf8(file.readAll()))) {
                for (const auto &found : quoted.globalMatch(line.captured())) {
                    names << found.captured(1);
                }
            }
        }
        QVERIFY(names.contains(u"gearshape.fill"_qs) && names.contains(u"checkmark.circle.fill"_qs));
        for (const QString &name : names) {
            const QImage image = SymbolProvider().requestImage(name + u"/20/80ff0000"_qs, nullptr, {});
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
