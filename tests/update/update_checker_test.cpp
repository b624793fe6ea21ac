#include "support/feed_server.h"
#include "update/update_checker.h"

#include <QCoro/QCoroCore>

#include <QNetworkProxyFactory>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace stowlark;
using namespace std::chrono_literals;

namespace {

class Button : public QObject {
    Q_OBJECT

Q_SIGNALS:
    void clicked();
};

/// A checker of version 1.3.2, and what it showed and opened.
struct Checked {
    explicit Checked(FeedRequest feed, std::optional<QString> version = u"1.3.2"_s)
        : checker(std::make_unique<UpdateChecker>(UpdateSettings{
              .showAlert =
                  [this](QString title, QString message, AlertStyle style) {
                      return alert(std::move(title), std::move(message), style);
                  },
              .openURL = [this](const QUrl &url) { opened += QString::fromUtf8(url.toEncoded()); },
              .feed = std::move(feed),
              .version = std::move(version),
          })) {
        QObject::connect(checker.get(), &UpdateChecker::isCheckingChanged,
                         [this] { journal += checker->isChecking() ? u"checking"_s : u"idle"_s; });
        QObject::connect(checker.get(), &UpdateChecker::availableChanged,
                         [this] { journal += u"available "_s + checker->release().version; });
    }

    QCoro::Task<> alert(QString title, QString message, AlertStyle style) {
        journal += title + u'|' + message + u'|' + QString::number(static_cast<int>(style)) +
                   (checker->isChecking() ? u""_s : u"|but idle"_s);
        if (ok != nullptr) {
            co_await qCoro(ok, &Button::clicked);
        }
    }

    QStringList journal;
    QStringList opened;
    Button *ok = nullptr; ///< keeps alerts up
    std::unique_ptr<UpdateChecker> checker;
};

const QString failed =
    u"Could Not Check for Updates|Unable to reach the update server. Please check your internet "
    "connection and try again later.|0"_s;
const QString upToDate = u"Stowlark is up to date|Version 1.3.2 is the latest version.|1"_s;
const QString found = u"available 2.0"_s;

} // namespace

class UpdateCheckerTest : public QObject {
    Q_OBJECT

    std::unique_ptr<Identity> identity;
    std::unique_ptr<Server> server;
    QTcpServer plain; ///< without TLS, where there is a newer release too

    /// With more patience than a test has.
    FeedRequest request() const { return {.url = server->url(), .timeout = 10min, .tls = identity->client}; }

    static QStringList bothChecks(const FeedRequest &feed) {
        Checked checked(feed);
        QCoro::waitFor(checked.checker->checkForUpdates());
        QCoro::waitFor(checked.checker->checkManually());
        return checked.journal;
    }

private Q_SLOTS:
    void initTestCase() {
        QNetworkProxyFactory::setUseSystemConfiguration(false);
        identity = std::make_unique<Identity>();
        QVERIFY(plain.listen(QHostAddress::LocalHost));
        connect(&plain, &QTcpServer::newConnection, this, [this] {
            QTcpSocket *socket = plain.nextPendingConnection();
            socket->write(http("200 OK", newer));
            socket->disconnectFromHost();
        });
    }

    void init() { server = std::make_unique<Server>(identity->server); }

    void checks_data() {
        QTest::addColumn<Reply>("reply");
        QTest::addColumn<QString>("unasked"); ///< what follows: nothing, or found
        QTest::addColumn<QString>("asked");   ///< what follows: found or an alert
        QTest::addColumn<int>("requests");    ///< how many
        const auto row = [](const char *name, const Reply &reply, const QString &unasked,
                            const QString &asked, int requests = 1) {
            QTest::newRow(name) << reply << unasked << asked << requests;
        };
        const auto redirect = [](const QByteArray &target) {
            return Reply{http("302 Found", newer, "Location: " + target + "\r\nSet-Cookie: a=b; Path=/\r\n")};
        };
        const QByteArray html = "<html>Not found</html>";
        const QByteArray endless = "HTTP/1.1 200 OK\r\n\r\n";
        const QByteArray limit = newer + QByteArray(feedSizeLimit - newer.size(), ' ');
        const QByteArray deflate = "Content-Encoding: deflate\r\n";
        row("newer", {http("200 OK", newer)}, found, found);
        row("equal", {http("200 OK", feed("1.3.2.0"))}, {}, upToDate);
        row("older", {http("200 OK", feed("1.3.1"))}, {}, upToDate);
        row("404", {http("404 Not Found", html)}, {}, failed);
        row("500 with a feed", {http("500 Internal Server Error", newer)}, found, failed);
        row("500 with a feed, cut off", {http("500 Oh", newer + ' ').chopped(1)}, {}, failed);
        row("201 with a feed", {http("201 Created", newer)}, found, failed);
        row("401 with a feed", {http("401 Unauthorized", newer, "WWW-Authenticate: Basic realm=\"a\"\r\n")},
            found, failed);
        row("redirect", redirect("https://127.0.0.1:PORT/moved"), found, found, 2);
        row("redirect to HTTP",
            redirect("http://127.0.0.1:" + QByteArray::number(plain.serverPort()) + "/moved"), {}, failed);
        row("cut off behind the feed", {http("200 OK", newer + ' ').chopped(1)}, {}, failed);
        row("endless", {endless, Then::repeat, QByteArray(10'000, ' ')}, {}, failed);
        row("1 MB", {http("200 OK", limit)}, found, found);
        row("over 1 MB", {http("200 OK", limit + ' ')}, {}, failed);
        row("compressed 9 MB",
            {http("200 OK", qCompress(newer + QByteArray(9'000'000, ' ')).sliced(4), deflate)}, {}, failed);
        row("garbage", {http("200 OK", QByteArray("\0\xFF{", 3))}, {}, failed);
        row("no HTTP", {newer + "\r\n\r\n"}, {}, failed);
        row("no answer", {""}, {}, failed);
    }

    void checks() {
        QFETCH(const Reply, reply);
        QFETCH(const QString, unasked);
        QFETCH(const QString, asked);
        server->reply = reply;
        Checked checked(request());
        const auto expected = [](const QString &between) {
            return between.isEmpty() ? QStringList{u"checking"_s, u"idle"_s}
                                     : QStringList{u"checking"_s, between, u"idle"_s};
        };
        QCoro::waitFor(checked.checker->checkForUpdates());
        QCOMPARE(checked.journal, expected(unasked));
        QCOMPARE(checked.checker->hasRelease(), !unasked.isEmpty());
        QFETCH(const int, requests);
        QCOMPARE(server->requests.size(), requests);
        const AppRelease earlier{.version = u"1.9"_s};
        checked.checker->setAvailable(earlier);
        checked.journal.clear();
        QCoro::waitFor(checked.checker->checkManually());
        QCOMPARE(checked.journal, expected(asked));
        QVERIFY(asked == found || checked.checker->available() == earlier);
        for (const QByteArray &sent : server->requests) {
            QVERIFY2(!sent.contains("Cookie:") && !sent.contains("Authorization:"), sent.constData());
        }
    }

    void waitsNoLongerThanItIsTold_data() {
        QTest::addColumn<Reply>("reply");
        QTest::addColumn<int>("longest");
        const QByteArray whole = http("200 OK", newer);
        QTest::newRow("silent") << Reply{"", Then::wait} << 60'000;
        QTest::newRow("silent after the headers") << Reply{whole.chopped(newer.size()), Then::wait} << 60'000;
        QTest::newRow("silent within the feed") << Reply{whole.chopped(1), Then::wait} << 60'000;
        QTest::newRow("no end in sight") << Reply{"HTTP/1.1 200 OK\r\n\r\n", Then::repeat, " ", 20ms} << 300;
    }

    void waitsNoLongerThanItIsTold() {
        QFETCH(const Reply, reply);
        QFETCH(const int, longest);
        server->reply = reply;
        FeedRequest feed = request();
        feed.timeout = 300ms;
        feed.longest = std::chrono::milliseconds(longest);
        Checked checked(feed);
        QCoro::waitFor(checked.checker->checkManually());
        QCOMPARE(checked.journal, QStringList({u"checking"_s, failed, u"idle"_s}));
    }

    void hasTimeForASlowServer() { // which is never silent for long
        server->reply = {http("200 OK", newer + QByteArray(40, ' ')).chopped(40), Then::repeat, " ", 50ms};
        FeedRequest feed = request();
        feed.timeout = 1500ms;
        Checked checked(feed);
        QCoro::waitFor(checked.checker->checkForUpdates());
        QVERIFY(checked.checker->hasRelease());
    }

    void failsWithoutAServerToTrust() {
        server->reply = {http("200 OK", newer)};
        QTcpServer mute;
        mute.listen(QHostAddress::LocalHost);
        FeedRequest otherAuthority = request();
        otherAuthority.tls->setCaCertificates({});
        FeedRequest otherName = request();
        otherName.url.setHost(u"localhost"_s);
        FeedRequest noHandshake = request();
        noHandshake.url.setPort(mute.serverPort());
        noHandshake.timeout = 300ms;
        const FeedRequest system{.url = server->url()};
        const QStringList silentThenNot{u"checking"_s, u"idle"_s, u"checking"_s, failed, u"idle"_s};
        for (const FeedRequest &feed : {otherAuthority, otherName, noHandshake, system}) {
            QCOMPARE(bothChecks(feed), silentThenNot);
        }
        server->close();
        QCOMPARE(bothChecks(request()), silentThenNot); // nobody listens
        QVERIFY(server->requests.isEmpty());
    }

    void checksOnceAtATime() {
        server->reply = {http("200 OK", newer), Then::close};
        Checked checked(request());
        auto running = checked.checker->checkForUpdates();
        QVERIFY(checked.checker->isChecking());
        QVERIFY(checked.checker->checkManually().isReady());
        QVERIFY(checked.checker->checkForUpdates().isReady());
        QCoro::waitFor(std::move(running));
        QCOMPARE(checked.journal, QStringList({u"checking"_s, found, u"idle"_s}));
        QCOMPARE(server->requests.size(), 1);

        checked.checker->clearAvailable();
        QCoro::waitFor(checked.checker->checkManually());
        QVERIFY(checked.checker->hasRelease()); // again

        server->reply = {http("200 OK", feed("1"))};
        checked.journal.clear();
        Button ok;
        checked.ok = &ok;
        running = checked.checker->checkManually();
        QTRY_COMPARE(checked.journal, QStringList({u"checking"_s, upToDate})); // and its alert is up
        QVERIFY(checked.checker->checkManually().isReady() && checked.checker->checkForUpdates().isReady());
        QCOMPARE(checked.journal.size(), 2);
        Q_EMIT ok.clicked();
        QCoro::waitFor(std::move(running));
        QCOMPARE(checked.journal.last(), u"idle"_s);
        QCOMPARE(server->requests.size(), 3);
    }

    void mayDieMeanwhile() {
        server->reply = {"", Then::wait};
        Checked fetching(request());
        auto running = fetching.checker->checkManually();
        QTRY_COMPARE(server->requests.size(), 1);
        fetching.checker.reset();
        QCoro::waitFor(std::move(running)); // long before the time-out
        QCOMPARE(fetching.journal, QStringList(u"checking"_s));

        server->reply = {http("200 OK", feed("1"))};
        Checked alerting(request());
        Button ok;
        alerting.ok = &ok;
        running = alerting.checker->checkManually();
        QTRY_COMPARE(alerting.journal.last(), upToDate);
        alerting.checker.reset();
        Q_EMIT ok.clicked();
        QCoro::waitFor(std::move(running));
        QCOMPARE(alerting.journal.last(), upToDate);
    }

    void opensTheDownload() {
        Checked checked(request());
        UpdateChecker &checker = *checked.checker;
        checker.openDownload();
        for (const char *none : {"", " ", "/etc/passwd", "//a", "https://a b.example",
                                 "https://a.example/%zz", "https://[", "a:b:c d"}) {
            checker.setAvailable(AppRelease{.version = u"2.0"_s, .downloadURL = QString::fromUtf8(none)});
            checker.openDownload();
            QVERIFY2(checked.opened.isEmpty(), none);
        }
        checker.setAvailable(AppRelease{.downloadURL = u"https://a.example/b?c=d%20e#f"_s});
        checker.openDownload();
        QCOMPARE(checked.opened, QStringList(u"https://a.example/b?c=d%20e#f"_s));
        QVERIFY(checker.hasRelease());
    }

    void knowsItsVersionAndAddress() {
        const FeedRequest built;
        QCOMPARE(built.url.path(), u"/stowlark/version.json"_s);
        QCOMPARE(Checked(built, bundleVersion()).checker->currentVersion(), bundleVersion());
        server->reply = {http("200 OK", feed("1"))};
        Checked checked(request(), std::nullopt);
        QCoro::waitFor(checked.checker->checkManually());
        QVERIFY(checked.journal.at(1).contains(u"|Version 1.0 is the latest version.|"));
    }
};

QTEST_GUILESS_MAIN(UpdateCheckerTest)
#include "update_checker_test.moc"
