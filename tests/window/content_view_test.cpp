#include "foundation/file_url.h"
#include "foundation/site.h"
#include "support/test_folder.h"
#include "window/content_view.h"
#include "window/uri_list.h"

#include <QCoro/QCoroSignal>

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace stowlark;

namespace {

QString at(ContentView &view) {
    return view.outputURL().toString(QUrl::FullyEncoded);
}

/// A desktop on which the user chooses what is given here.
struct Choices {
    QList<QUrl> files{};
    QList<QUrl> begins{}; ///< where the choosers were opened
    std::optional<QUrl> folder{};
    QList<QUrl> revealed{};
    QList<QUrl> opened{};
    QString copied{};
    bool waits = false; ///< choosers of folders wait until `decision` shows something
    AppState decision{};
    Desktop desktop() {
        return {.chooseFilesAndFolders = [this](QUrl begin) -> QCoro::Task<QList<QUrl>> {
                    begins += begin;
                    co_return QList(files);
                },
                .chooseArchive = [this](QUrl begin) -> QCoro::Task<std::optional<QUrl>> {
                    begins += begin;
                    co_return files.isEmpty() ? std::nullopt : std::optional(files.first());
                },
                .chooseFolder = [this](QUrl begin) -> QCoro::Task<std::optional<QUrl>> {
                    begins += begin;
                    if (waits) {
                        co_await qCoro(&decision, &AppState::showHelpChanged);
                    }
                    co_return std::optional(folder);
                },
                .reveal = [this](const QUrl &item) { revealed += item; },
                .openURL = [this](const QUrl &page) { opened += page; },
                .showAlert = {},
                .copyText = [this](const QString &text) { copied = text; }};
    }
};

/// Drops the URLs, and waits until all have been looked at.
void drop(ContentView &view, const QList<QUrl> &urls) {
    view.dropFiles(uriList(urls));
    QTRY_VERIFY(!view.files()->isAdding());
}

} // namespace

class ContentViewTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void startsAsStated() {
#ifdef Q_OS_MACOS
        QSKIP("the home folder cannot be another one here");
#endif
        const TestFolder home;
        qputenv("HOME", QByteArray::fromStdString(home.path().native()));
        qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString((home.path() / "config").native()));
        QCOMPARE(ContentView().outputDir(), fileUrl(home.path())); // there is no Desktop folder
        std::filesystem::create_directory(home.path() / "Desktop");
        ContentView view;
        QCOMPARE(view.outputDir(), fileUrl(home.path() / "Desktop"));
        QCOMPARE(view.extractDir(), view.outputDir());
        QCOMPARE(view.mode(), AppMode::compress);
        QCOMPARE(view.format(), ArchiveFormat::zip);
        QCOMPARE(view.level(), CompressionLevel::normal);
        QCOMPARE(view.archiveName(), u"archive"_s);
        QVERIFY(view.createDisabled() && view.extractDisabled());
    }

    void takesWhatComesIn() {
        Choices choices;
        AppState state;
        state.setIncomingFile(fileUrl("/before/a.zip"));
        ContentView view(choices.desktop(), {}, state);
        QCOMPARE(view.archiveFile(), fileUrl("/before/a.zip"));
        view.setMode(AppMode::compress);
        drop(view, {fileUrl("/kept")});
        state.setIncomingFile(fileUrl("/elsewhere/notes.txt"));
        QCOMPARE(view.mode(), AppMode::extract);
        QCOMPARE(view.archiveFile(), fileUrl("/elsewhere/notes.txt"));
        QCOMPARE(view.extractDir(), fileUrl("/elsewhere"));
        QVERIFY(state.incomingFile().isEmpty());
        QCOMPARE(view.files()->urls().size(), 1U);
        view.openSite();
        QCOMPARE(choices.opened, QList<QUrl>{siteURL()});
    }

    void namesTheOutput() {
        ContentView view;
        view.setOutputDir(fileUrl("/out"));
        QCOMPARE(at(view), u"file:///out/archive.zip"_s);
        view.setArchiveName(u" x "_s);
        QCOMPARE(at(view), u"file:///out/%20x%20.zip"_s);
        view.setArchiveName(u" \t "_s);
        QCOMPARE(at(view), u"file:///out/archive.zip"_s);
        drop(view, {fileUrl("/a")});
        QVERIFY(view.createDisabled());
        view.setArchiveName(u"\n"_s); // a line break is a name
        QVERIFY(!view.createDisabled());
        view.setArchiveName(u"/etc/../x%41"_s); // one component, whatever it holds
        QCOMPARE(path(view.outputURL()).native(), std::string("/out/:etc:..:x%41.zip"));
        view.setArchiveName(u"a"_s);
        QStringList names;
        for (const ArchiveFormat format : allCases<ArchiveFormat>()) {
            view.setFormat(format);
            names += view.outputURL().fileName() + view.extensionLabel();
        }
        QCOMPARE(names.join(u' '), u"a.zip.zip a.tar.gz.tar.gz a.7z.7z a.rar.rar a.dmg.dmg"_s);
    }

    void listsEachItemOnce() {
        const TestFolder folder;
        const QUrl a = fileUrl(folder.write("a b%.txt", QByteArray(1500, 'a')));
        const QUrl b = fileUrl(folder.path() / "gone");
        Choices choices{.files = {a, b, b}};
        ContentView view(choices.desktop());
        const QUrl elsewhere(u"file://elsewhere.example/x"_s);
        QUrl here = a;
        here.setHost(QSysInfo::machineHostName().toUpper());
        drop(view,
             {a, here, elsewhere, QUrl(u"http://host/x"_s), QUrl(u"text"_s), QUrl(a.toString() + u'/'), a});
        QCOMPARE(view.files()->urls(), std::vector{a});
        QCOMPARE(view.files()->countText() + view.files()->totalSize(), u"1 item2 KB"_s);
        view.browseFiles();
        QTRY_VERIFY(!view.files()->isAdding());
        QCOMPARE(view.files()->urls(), (std::vector{a, b}));
        QCOMPARE(view.files()->countText(), u"2 items"_s);
        const QModelIndex row = view.files()->index(0);
        QCOMPARE(row.data(FileListModel::nameRole).toString(), u"a b%.txt"_s);
        QCOMPARE(row.data(FileListModel::sizeRole).toString(), u"2 KB"_s);
        view.removeFile(a);
        QCOMPARE(view.files()->urls(), std::vector{b});
        QCOMPARE(view.files()->totalSize(), QString());
        view.clearFiles();
        QVERIFY(view.createDisabled());
        QCOMPARE(view.files()->countText(), u"0 items"_s);
    }

    void forgetsWhatIsStillBeingAdded() {
        const TestFolder folder;
        QList<QUrl> many;
        for (int i = 0; i < 10'000; ++i) {
            many += fileUrl(folder.path() / std::to_string(i));
        }
        ContentView view;
        view.dropFiles(uriList(many));
        QTRY_VERIFY(view.files()->count() > 0); // the first portion
        QVERIFY(view.files()->isAdding() && view.createDisabled());
        view.clearFiles();
        drop(view, {many[1], many[0]});
        QCOMPARE(view.files()->urls(), (std::vector{many[1], many[0]}));
        auto gone = std::make_unique<ContentView>();
        gone->dropFiles(uriList(many));
        QTRY_VERIFY(gone->files()->count() > 0);
        gone.reset();
        QTest::qWait(50);
    }

    void selectsOneArchiveAndItsFolder() {
        Choices choices{.files = {fileUrl("/c/3.zip")}, .folder = fileUrl("/chosen")};
        ContentView view(choices.desktop());
        view.dropArchives(uriList({fileUrl("/a/1.zip"), fileUrl("/b/2.txt"), QUrl(u"http://host/x.zip"_s)}));
        QCOMPARE(view.archiveFile(), fileUrl("/b/2.txt"));
        QCOMPARE(view.extractDir(), fileUrl("/b"));
        view.chooseExtractDir();
        view.chooseSaveDir();
        QCOMPARE(view.extractDir(), fileUrl("/chosen"));
        QCOMPARE(view.outputDir(), fileUrl("/chosen"));
        view.removeArchive();
        QVERIFY(view.extractDisabled());
        QCOMPARE(view.extractDir(), fileUrl("/chosen"));
        view.browseArchive();
        QCOMPARE(view.extractDir(), fileUrl("/c"));
        QCOMPARE(choices.begins, (QList{fileUrl("/b"), desktopURL(), fileUrl("/chosen")}));
        choices.files.clear();
        view.browseArchive();
        QCOMPARE(view.archiveFile(), fileUrl("/c/3.zip"));
    }

    void opensOneChooserAtATime() {
        Choices choices{.folder = fileUrl("/first"), .waits = true};
        ContentView view(choices.desktop());
        view.chooseSaveDir();
        view.chooseSaveDir();
        view.browseFiles();
        QCOMPARE(choices.begins.size(), 1);
        choices.decision.setShowHelp(true);
        QTRY_COMPARE(view.outputDir(), fileUrl("/first"));
        view.chooseSaveDir();
        QCOMPARE(choices.begins, (QList{desktopURL(), fileUrl("/first")}));
        QSignalSpy chosen(&view, &ContentView::outputDirChanged);
        choices.decision.setShowHelp(true);
        QTRY_COMPARE(chosen.size(), 1);
    }

    void showsWhatIsReadLater() {
        const TestFolder folder;
        ContentView view(systemDesktop(), {.searchFolders = {folder.path().native() + "/"}});
        view.setFormat(ArchiveFormat::rar);
        QVERIFY(!view.toolWarning().isEmpty());
        folder.write("rar", "a tool, just installed");
        QSignalSpy warning(&view, &ContentView::toolWarningChanged);
        Q_EMIT view.mgr()->isCreatingChanged();
        QCOMPARE(warning.size(), 1);
        QVERIFY(view.toolWarning().isEmpty());
        view.setArchiveFile(fileUrl(folder.write("a.zip", QByteArray(1500, 'a'))));
        QTRY_COMPARE(view.property("archiveFileSize").toString(), u"2 KB"_s);
        view.removeArchive();
        QVERIFY(view.property("archiveFileSize").toString().isEmpty());
    }

    void createsExtractsAndShows() {
        const TestFolder folder;
        Choices choices;
        ContentView view(choices.desktop());
        view.create();
        view.extract();
        QVERIFY(!view.mgr()->isCreating());
        drop(view, {fileUrl(folder.write("a.txt", "a"))});
        view.setOutputDir(fileUrl(folder.path()));
        view.create();
        QVERIFY(view.mgr()->isCreating());
        QSignalSpy begun(view.mgr(), &ArchiveManager::isCreatingChanged);
        view.create(); // a second click
        QCOMPARE(begun.size(), 0);
        QTRY_VERIFY(!view.mgr()->isCreating());
        QCOMPARE(view.mgr()->statusMessage(), u"Archive created: archive.zip"_s);
        QCOMPARE(view.files()->count(), 1);
        view.showInFinder();
        QCOMPARE(choices.revealed, QList{fileUrl(folder.path() / "archive.zip")});
        view.setMode(AppMode::extract);
        QVERIFY(view.mgr()->statusMessage().isEmpty() && !view.hasOutput());
        view.setArchiveFile(fileUrl(folder.path() / "archive.zip"));
        view.extract();
        QTRY_VERIFY(!view.mgr()->isCreating());
        QCOMPARE(view.mgr()->statusMessage(), u"Extracted to: archive/"_s);
        QCOMPARE(readFile(folder.path() / "archive/a.txt"), "a");
        QVERIFY(!view.extractDisabled());
    }

    void showsTheHeadlineOfTheNotes() {
        UpdateChecker updater({});
        AppState state;
        ContentView view(systemDesktop(), {}, state, updater);
        for (const char *notes : {"one", "one\ntwo", "one\r\ntwo"}) {
            updater.setAvailable(AppRelease{.version = u"2"_s, .releaseNotes = QString::fromUtf8(notes)});
            QCOMPARE(view.releaseHeadline(), u"one"_s);
        }
        view.setProperty("showReleaseNotes", true);
        updater.clearAvailable();
        QVERIFY(!view.property("showReleaseNotes").toBool());
    }

    void dividesLongMessages() {
        const TestFolder folder;
        const Path zip = folder.write("zip", "#!/bin/sh\nhead -c 1500 /dev/zero | tr '\\0' x\n"
                                             "for i in $(seq 20); do echo; echo $i; done\nexit 1\n");
        std::filesystem::permissions(zip, std::filesystem::perms::owner_all);
        Choices choices;
        ContentView view(choices.desktop(), {.zip = zip});
        drop(view, {fileUrl(folder.write("a.txt", "a"))});
        view.setOutputDir(fileUrl(folder.path()));
        view.create();
        QTRY_VERIFY(!view.mgr()->isCreating());
        QVERIFY(view.statusText().isEmpty() && view.statusSummary().endsWith(u"\n20"_s));
        QCOMPARE(view.statusLines().size(), 41);
        QCOMPARE(view.statusLines()[1], QString(500, u'x'));
        view.copyStatus();
        QCOMPARE(choices.copied, view.mgr()->statusMessage());
        view.setMode(AppMode::extract);
        QVERIFY(view.statusLines().isEmpty());
    }
};

QTEST_MAIN(ContentViewTest)
#include "content_view_test.moc"
