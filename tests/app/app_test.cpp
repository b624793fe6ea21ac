#include "app/app_delegate.h"
#include "app/invocation.h"
#include "app/menu_commands.h"
#include "app/quitting.h"
#include "foundation/file_url.h"
#include "foundation/site.h"
#include "support/feed_server.h"

#include <QDir>
#include <QFileOpenEvent>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace stowlark;

namespace {

/// What is handed over to the window.
struct Window {
    QStringList files;
    HandOver handOver() {
        return [this](const QUrl &file) { files += QString::fromLatin1(file.toEncoded()); };
    }
};

Invocation asked(std::vector<std::string> arguments) {
    std::vector<char *> pointers;
    for (std::string &argument : arguments) {
        pointers.push_back(argument.data());
    }
    return invocation(pointers);
}

} // namespace

class AppTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void handsOpenedFilesOver() {
        Window window;
        UpdateChecker updater({});
        AppDelegate delegate(updater, window.handOver());
        QVERIFY(delegate.applicationOpenFile("/no such.zip"));
        QVERIFY(delegate.applicationOpenFile("/b\xFF.txt"));
        QFileOpenEvent event(QUrl(u"file:///last.zip"_s));
        QVERIFY(QCoreApplication::sendEvent(QCoreApplication::instance(), &event));
        QCoreApplication::processEvents();
        QVERIFY(window.files.isEmpty());
        QTRY_COMPARE(window.files.size(), 3);
        QCOMPARE(window.files,
                 (QStringList{u"file:///no%20such.zip"_s, u"file:///b%FF.txt"_s, u"file:///last.zip"_s}));
    }

    void checksForUpdatesAfterLaunch() {
        const Identity identity;
        Server server(identity.server);
        Window window;
        UpdateChecker updater({.showAlert = {},
                               .openURL = {},
                               .feed = {.url = server.url(), .tls = identity.client},
                               .version = {}});
        AppDelegate delegate(updater, window.handOver());
        delegate.applicationDidFinishLaunching();
        QCoreApplication::processEvents();
        QVERIFY(!updater.isChecking());
        QTRY_VERIFY(updater.isChecking());
        QTRY_COMPARE(server.requests.size(), 1);
    }

    void extractsTheFirstFile() {
        Window window;
        ServiceHandler handler(window.handOver());
        for (const QStringList &none :
             {QStringList(),
              {u"text"_s, u"/tmp/x.zip"_s, QString(), u"file:"_s, u"http://x.example/x.zip"_s},
              QStringList(10'000, u"file://elsewhere.example/x.zip"_s)}) {
            handler.extractFiles(none);
            QCoreApplication::processEvents();
            QVERIFY(window.files.isEmpty());
        }
        handler.extractFiles({u"text"_s, u"file:///a%FF%20b.zip"_s, u"file:///second.zip"_s});
        QVERIFY(window.files.isEmpty());
        QCoreApplication::processEvents();
        QCOMPARE(window.files, QStringList{u"file:///a%FF%20b.zip"_s});
    }

    void readsTheCommandLine() {
        using Kind = Invocation::Kind;
        const TestFolder folder;
        std::filesystem::create_directory_symlink(folder.path(), folder.path() / "link");
        QVERIFY(QDir::setCurrent(QString::fromStdString(folder.path().native())));
        QCOMPARE(asked({}).kind, Kind::activate);
        QCOMPARE(asked({"--gapplication-service"}).kind, Kind::activate);
        QCOMPARE(asked({"http://x.example/x.zip", ""}).kind, Kind::activate);
        QCOMPARE(asked({"--extract"}).action, u"extract"_s);
        const auto at = [&](const char *name) {
            return QString::fromLatin1(fileUrl(folder.path() / name).toEncoded());
        };
        const Invocation open =
            asked({"\xFF\xC3\xA4 %20.zip", "link/x", "link/../x", "file:///y%FF", "--", "--extract"});
        QCOMPARE(open.kind, Kind::open);
        QCOMPARE(open.uris[0], at("\xFF\xC3\xA4 %20.zip"));
        QCOMPARE(open.uris[1], at("link/x"));
        QCOMPARE(open.uris[2], QString::fromLatin1(fileUrl(folder.path().parent_path() / "x").toEncoded()));
        QCOMPARE(open.uris.mid(3), (QStringList{u"file:///y%FF"_s, at("--extract")}));
        const Invocation service = asked({"--extract-files", "/a", "/b"});
        QCOMPARE(service.kind, Kind::extractFiles);
        QCOMPARE(service.uris.first(), u"file:///a"_s);
    }

    void commandsRaiseFlags() {
        AppState state;
        UpdateChecker updater({});
        int visits = 0;
        MenuCommands commands(state, updater, [&visits] { ++visits; });
        commands.about()->trigger();
        QVERIFY(state.showAbout() && !state.showHelp());
        commands.help()->trigger(); // one sheet at a time
        QVERIFY(state.showHelp() && !state.showAbout());
        commands.visit()->trigger();
        QCOMPARE(visits, 1);
        QCOMPARE(commands.checkForUpdates()->label(), u"Check for Updates\u2026"_s);
        QCOMPARE(commands.visit()->label(), u"Visit "_s + siteName());
    }

    void quitsBetweenOperations_data() {
        QTest::addColumn<int>("status");
        QTest::newRow("success") << 0;
        QTest::newRow("failure") << 1;
    }

    void quitsBetweenOperations() {
        QFETCH(int, status);
        const TestFolder folder;
        const QByteArray waits = "while ! [ -e ../../go ]; do sleep 0.01; done; exit ";
        ArchiveManager mgr({.zip = folder.writeTool("zip", waits + QByteArray::number(status))});
        int quits = 0;
        Quitting quitting(mgr, [&quits] { ++quits; });
        QVERIFY(quitting.request() && !quitting.isPending());
        mgr.createArchive({fileUrl(folder.write("a.txt", "a"))}, ArchiveFormat::zip, CompressionLevel::normal,
                          fileUrl(folder.path() / "a.zip"));
        QEvent quit(QEvent::Quit); // by the menu, or the desktop
        QVERIFY(QCoreApplication::sendEvent(QCoreApplication::instance(), &quit) && !quit.isAccepted());
        QVERIFY(quitting.isPending());
        folder.write("go", "");
        QTRY_VERIFY(!mgr.isCreating());
        QVERIFY(!quitting.isPending());
        QCOMPARE(quits, status == 0 ? 1 : 0);
        QCOMPARE(mgr.statusIsError(), status != 0);
    }
};

QTEST_GUILESS_MAIN(AppTest)
#include "app_test.moc"
