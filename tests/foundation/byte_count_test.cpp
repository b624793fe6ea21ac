#include "foundation/byte_count.h"

#include <QTest>

using namespace stowlark;

class ByteCountTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void showsSizesAsFileManagersDo_data() {
        QTest::addColumn<qint64>("bytes");
        QTest::addColumn<QString>("text");
        const auto row = [](qint64 bytes, const char *text) {
            QTest::newRow(text) << bytes << QString::fromUtf8(text);
        };
        row(0, "Zero KB");
        row(1, "1 byte");
        row(2, "2 bytes");
        row(999, "999 bytes");
        row(1000, "1 KB");
        row(20'500, "21 KB");
        row(999'499, "999 KB");
        row(999'999, "1 MB");
        row(1'249'000, "1.2 MB");
        row(99'960'000, "100 MB");
        row(999'960'000, "1 GB");
        row(1'234'000'000, "1.23 GB");
        row(1'500'000'000, "1.5 GB");
        row(20'000'000'000'000, "20 TB");
        row(std::numeric_limits<qint64>::max(), "9223.37 PB");
    }
    void showsSizesAsFileManagersDo() {
        QFETCH(qint64, bytes);
        QTEST(byteCountText(bytes), "text");
    }
};

QTEST_GUILESS_MAIN(ByteCountTest)
#include "byte_count_test.moc"
