// icon_set_test MAKE_ICNS DRAWING

#include <QDataStream>
#include <QFile>
#include <QImage>
#include <QMap>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class IconSetTest : public QObject {
    Q_OBJECT

public:
    QString tool, drawing;

private Q_SLOTS:
    void holds_all_sizes() {
        const QTemporaryDir folder;
        const QString icons = folder.filePath(u"x.icns"_s);
        QCOMPARE(QProcess::execute(tool, {drawing, icons}), 0);
        QFile file(icons);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QDataStream in(&file);
        const auto entry = [&in](quint32 &length) {
            QByteArray type(4, '\0');
            in.readRawData(type.data(), 4);
            in >> length;
            return type;
        };
        quint32 length = 0;
        QCOMPARE(entry(length), "icns");
        QCOMPARE(length, file.size());
        QMap<QByteArray, int> sides;
        while (!in.atEnd()) {
            const QByteArray type = entry(length);
            const QImage image = QImage::fromData(file.read(length - 8), "PNG");
            const int side = image.width();
            QCOMPARE(image.height(), side);
            sides[type] = side;
            QCOMPARE(image.pixel(0, side / 2), 0U); // the margin
            QCOMPARE(qAlpha(image.pixel(side / 8, side / 2)), 255);
            QCOMPARE(qAlpha(image.pixel(side / 10 + side / 64, side / 10 + side / 64)), 0); // a round corner
        }
        QCOMPARE(sides, (QMap<QByteArray, int>{{"icp4", 16},
                                               {"icp5", 32},
                                               {"ic07", 128},
                                               {"ic08", 256},
                                               {"ic09", 512},
                                               {"ic10", 1024},
                                               {"ic11", 32},
                                               {"ic12", 64},
                                               {"ic13", 256},
                                               {"ic14", 512}}));
    }

    void fails_without_a_drawing() {
        const QTemporaryDir folder;
        QVERIFY(QProcess::execute(tool, {folder.filePath(u"none.svg"_s), folder.filePath(u"x"_s)}) != 0);
    }
};

int main(int argc, char *argv[]) {
    const QCoreApplication application(argc, argv);
    IconSetTest test;
    test.tool = QString::fromLocal8Bit(argv[1]);
    test.drawing = QString::fromLocal8Bit(argv[2]);
    return QTest::qExec(&test);
}

#include "icon_set_test.moc"
