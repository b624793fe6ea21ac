#include "update/app_release.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace stowlark;

namespace {

/// JSON, written with ' for ".
QByteArray json(QByteArray text) {
    return text.replace('\'', '"');
}

const QByteArray plain =
    json("'version':'1.4.0','releaseNotes':'Faster.','downloadURL':'https://a.example/b'");

/// A feed with something more in the object, which matters only if it breaks it.
QByteArray with(const QByteArray &more) {
    return '{' + plain + ',' + json(more) + '}';
}

/// The release notes of a feed that has them written so; a null string if it does not decode.
QString notes(const QByteArray &text) {
    const auto release =
        AppRelease::decode(json("{'version':'','downloadURL':'','releaseNotes':") + json(text) + '}');
    return release ? release->releaseNotes : QString();
}

} // namespace

class AppReleaseTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void readsAndWritesAFeed() {
        const AppRelease release{u"1.4.0"_s, u"Faster."_s, u"https://a.example/b"_s, {}};
        QCOMPARE(AppRelease::decode('{' + plain + '}'), release);
        QCOMPARE(AppRelease::decode("\xEF\xBB\xBF \t\r\n{" + plain + "}\n"), release);
        QCOMPARE(AppRelease::decode(with("'releaseDate':null")), release);
        for (const char *extra :
             {"'ReleaseDate':1", "'release_date':[{'releaseDate':2}, 0, -0.5e-3, 1E+2, '\\b\\f']",
              "'':true"}) {
            QCOMPARE(AppRelease::decode(with(extra)), release);
        }
        QCOMPARE(AppRelease::decode(with("'version':'1', '\\u0076ersion':'1.4.0'")),
                 release); // the last counts
        AppRelease dated = release;
        dated.releaseDate = u"some day"_s;
        QCOMPARE(AppRelease::decode(with("'releaseDate':'some day'")), dated);
        QCOMPARE(AppRelease::decode(with("'releaseDate':''"))->releaseDate, QString());

        QCOMPARE(AppRelease::decode(dated.encode()), dated);
        QCOMPARE(AppRelease::decode(release.encode()), release);
        QVERIFY(!release.encode().contains("releaseDate"));
    }

    void keepsTextAsItIs() {
        QVERIFY(notes("''").isEmpty() && !notes("''").isNull());
        QCOMPARE(
            notes("'  a\\u0000b\\n\\ud83d\\ude00 \xF0\x9F\x98\x80\xEF\xBB\xBF\xC3\xA9\\uFFFF\\/\\'\\\\ '"),
            u"  a"_s + QChar(0) + u"b\n😀 😀\uFEFFé\uFFFF/\"\\ "_s);
        QCOMPARE(notes("'\xEF\xBB\xBFx'"), u"\uFEFFx"_s);
        const QByteArray many = QByteArray("Notes in \xE6\x97\xA5\xE6\x9C\xAC. \\u00e9\\n").repeated(40'000);
        QCOMPARE(notes('"' + many + '"'), u"Notes in 日本. é\n"_s.repeated(40'000));
        QVERIFY(!notes("'', 'x':[" + QByteArray("1,").repeated(400'000) + "1]").isNull());
    }

    void refusesWhatIsNoFeed_data() {
        QTest::addColumn<QByteArray>("feed");
        const auto row = [](const QByteArray &json) {
            QTest::addRow("%s", json.left(60).constData()) << json;
        };
        for (const char *none : {"", " ", "null", "true", "1", "\"\"", "[]", "{}", "<html></html>"}) {
            row(none);
        }
        row('[' + ('{' + plain + '}') + ']');
        const QByteArray whole = '{' + plain + '}';
        row(whole + whole);
        row(whole + '\0');
        row(whole + ",");
        row(whole.chopped(1));
        row('{' + plain + ",}");
        row("\xFF\xFE" + whole);
        row(whole + "\xEF\xBB\xBF");
        for (const char *key : {"'version'", "'releaseNotes'", "'downloadURL'"}) {
            row(QByteArray(whole).replace(json(key), json(key).toUpper()));
            for (const char *value : {"null", "2", "true", "[]", "{}", "['1']"}) {
                row(with(QByteArray(key) + ':' + value)); // the last counts
            }
        }
        for (const char *value : {"20260301", "false", "[]", "{}"}) {
            row(with(QByteArray("'releaseDate':") + value));
        }
        // Faults in what is ignored, but has to be JSON.
        const QByteArray faults =
            "01|00|1.|.5|+1|1e|-|0x1|NaN|1-2|1 2|tru|nulll|a|[1,]|[,1]|[1 2]|{'a'}|{'a':1,}|{a:1}|[}|1,/**/|"
            "\xC2\xA0 1|'|'\t'|'\n'|'\\q'|'\\u12g4'|'\\ud800'|'\\udc00'|'\\ud800\\u0041'|'\xFF'|'\xC0\xAF'|"
            "'\xED\xA0\x80'|'\xF4\x90\x80\x80'|'\xE2\x82'|'\\\xEF\xBB\xBF'";
        for (const QByteArray &value : faults.split('|')) {
            row(with("'x':" + value));
        }
        row(with("'\xFF':1"));
        row(with("'x':'" + QByteArray(1, '\0') + '\''));
        row(with("'x':" + QByteArray(900'000, '[')));
    }

    void refusesWhatIsNoFeed() {
        QFETCH(const QByteArray, feed);
        QVERIFY(!AppRelease::decode(feed).has_value());
    }
};

QTEST_APPLESS_MAIN(AppReleaseTest)
#include "app_release_test.moc"
