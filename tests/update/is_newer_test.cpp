#include "update/is_newer.h"

#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace stowlark;

namespace {

/// A number of any length as a text that sorts as the number does; empty for what is none or too large.
QString sortable(const QString &piece) {
    static const QRegularExpression form(QStringLiteral("\\A([+-]?)0*([0-9]+)\\z"));
    const QRegularExpressionMatch match = form.match(piece);
    const bool negative = match.captured(1) == u"-";
    QString digits = match.captured(2).rightJustified(19, u'0');
    const QString largest =
        negative ? QStringLiteral("9223372036854775808") : QStringLiteral("9223372036854775807");
    if (!match.hasMatch() || digits.size() > 19 || digits > largest) {
        return {};
    }
    if (!negative || digits.count(u'0') == 19) {
        return u'p' + digits;
    }
    for (QChar &digit : digits) { // the larger, the lower
        digit = QChar(u'0' + u'9' - digit.unicode());
    }
    return u'n' + digits;
}

/// The rule again, by texts alone.
bool slowIsNewer(const QString &candidate, const QString &reference) {
    const auto key = [](const QString &version) {
        QStringList pieces;
        for (const QString &piece : version.split(u'.')) {
            pieces += sortable(piece);
        }
        pieces.removeAll(QString());
        while (pieces.size() < 12) {
            pieces += sortable(QStringLiteral("0"));
        }
        return pieces.join(QString());
    };
    return key(candidate) > key(reference);
}

} // namespace

class IsNewerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void comparesByNumbers_data() {
        QTest::addColumn<QString>("reference");
        QTest::addColumn<bool>("newer");
        const auto row = [](const char *candidate, const char *reference, bool newer) {
            QTest::addRow("%s", candidate) << QString::fromUtf8(reference) << newer;
        };
        row("1.2.10", "1.2.9", true);
        row("2.0", "2", false);
        row("2", "2.0.0", false);
        row("2.0.1", "2", true);
        row("1.0", "1.0.1", false);
        row("1.3-beta", "1.2", false);
        row("1.3.0-beta", "1.2", true);
        row("v2.0", "1.9", false);
        row("", "0.0", false);
        row("", "", false);
        row("0.1", "", true);
        row("", "-1", true);
        row("1..2", "1.2", false);
        row("..1..2.", "1.1", true);
        row("1.-1", "1", false);
        row("1", "1.-1", true);
        row("+2", "1", true);
        row("99999999999999999999.1", "0.5", true);
        row("9223372036854775807", "9223372036854775806", true);
        row("9223372036854775808", "1", false);
        row("0", "-9223372036854775808", true);
        row("0", "-9223372036854775809", false);
        row("0", "-+2", false);
        row("0000000000000000000000002", "1", true);
        for (const char *none : {"+-2", "++2", "+", " 2", "2 ", "2\n", "0x2", "2e1", "2,0", "²", "２"}) {
            row(none, "0", false);
        }
        QTest::newRow("a null character") << u"1"_s << false;
    }

    void comparesByNumbers() {
        QFETCH(const QString, reference);
        QString candidate = QString::fromUtf8(QTest::currentDataTag());
        if (candidate == u"a null character") {
            candidate = QString(u'2') + QChar(0);
        }
        QTEST(isNewer(candidate, reference), "newer");
    }

    void agreesWithASlowerRule() {
        QRandomGenerator random(20260301);
        const QStringList pieces =
            u". . . . - + 0 0 1 1 2 9 10 -1 x 9223372036854775807 922337203685477580"_s.split(u' ');
        int newer = 0;
        for (int round = 0; round < 20'000; ++round) {
            const auto version = [&] {
                QString text;
                for (int count = random.bounded(12); count > 0; --count) {
                    text += pieces[random.bounded(pieces.size())];
                }
                return text;
            };
            const QString candidate = version();
            const QString reference = version();
            const bool expected = slowIsNewer(candidate, reference);
            newer += expected ? 1 : 0;
            QVERIFY2(isNewer(candidate, reference) == expected,
                     qPrintable(candidate + u" and "_s + reference));
        }
        QVERIFY(newer > 5'000 && newer < 15'000);
    }
};

QTEST_APPLESS_MAIN(IsNewerTest)
#include "is_newer_test.moc"
