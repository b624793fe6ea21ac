#include "foundation/file_url.h"
#include "support/layout.h"
#include "support/test_folder.h"
#include "window/main_window.h"
#include "window/uri_list.h"

#include <QApplication>
#include <QQuickStyle>
#include <QTest>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;
using namespace stowlark;

namespace {

QString focused(QQuickWindow *window) {
    return window->activeFocusItem() != nullptr ? window->activeFocusItem()->property("text").toString()
                                                : QString();
}

/// Presses Tab until the control of this label, whose translation only begins with it, has the focus.
bool walkTo(QQuickWindow *window, const QString &label) {
    for (int i = 0; i < 30 && !focused(window).startsWith(label); ++i) {
        QTest::keyClick(window, Qt::Key_Tab);
    }
    return focused(window).startsWith(label);
}

} // namespace

/// Texts that are long in every way at once, enlarged by half.
class LayoutTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void nothingClipsOrOverlaps_data() {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<AppMode>("mode");
        for (const AppMode mode : {AppMode::compress, AppMode::extract}) {
            for (const QSize size : {QSize(560, 620), QSize(700, 1000), QSize(2560, 1440)}) {
                QTest::addRow("%d, %d x %d", static_cast<int>(mode), size.width(), size.height())
                    << size << mode;
            }
        }
    }

    void nothingClipsOrOverlaps() {
        QFETCH(const QSize, size);
        QFETCH(const AppMode, mode);
        const TestFolder folder; // where what fails leaves its copies
        const std::string longest(255, 'W');
        Path deep = "/";
        for (int i = 0; i < 15; ++i) {
            deep /= longest;
        }
        const Tools none{.zip = "/nonexistent", .searchFolders = {}};
        AppState state;
        UpdateChecker updater({});
        updater.setAvailable(AppRelease{.version = QString(60, u'9'), .releaseNotes = QString(3000, u'W')});
        ContentView view(systemDesktop(), none, state, updater);
        view.setMode(mode);
        view.setFormat(ArchiveFormat::rar);
        view.setArchiveName(QString(255, u'W'));
        view.setOutputDir(fileUrl(deep));
        view.dropFiles(uriList({fileUrl(deep / longest), fileUrl("/usr"), fileUrl("/etc/passwd")}));
        QTRY_COMPARE(view.files()->count(), 3);
        view.setArchiveFile(fileUrl(deep / longest));
        mode == AppMode::compress ? view.create() : view.extract();
        QTRY_VERIFY(!view.mgr()->isCreating() && view.mgr()->statusIsError());

        QQmlEngine engine;
        const std::unique_ptr<QQuickWindow> window = openMainWindow(engine, view);
        QVERIFY(window != nullptr);
        window->resize(size);
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        QQuickItem *place = window->contentItem();
        const auto isRight = [&] { return faults(place).isEmpty(); };
        QVERIFY2(QTest::qWaitFor(isRight, 3000), qUtf8Printable(faults(place).join(u'\n')));
        view.setProperty("showReleaseNotes", true);
        QTRY_VERIFY(focused(window.get()).startsWith(u"WWW"));
        for (place = window->activeFocusItem(); !place->inherits("QQuickPopupItem");) {
            place = place->parentItem();
        }
        QVERIFY2(QTest::qWaitFor(isRight, 3000), qUtf8Printable(faults(place).join(u'\n')));
    }

    void rowsLeaveWithoutOverlap() {
        ContentView view;
        QList<QUrl> urls;
        for (char name = 'a'; name <= 't'; ++name) {
            urls += fileUrl(Path("/nonexistent") / std::string(1, name));
        }
        view.dropFiles(uriList(urls));
        QTRY_COMPARE(view.files()->count(), 20);
        QQmlEngine engine;
        const std::unique_ptr<QQuickWindow> window = openMainWindow(engine, view);
        window->resize(700, 1600);
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        const auto texts = [&] { return visibleTexts(window->contentItem()); };
        QTRY_VERIFY(texts().size() > 30 && overlaps(texts()).isEmpty());
        window->requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
        QVERIFY(walkTo(window.get(), u"20 items"_s));
        QStringList found;
        int frames = 0;
        connect(window.get(), &QQuickWindow::frameSwapped, this, [&] {
            found += overlaps(texts());
            constexpr std::array keys{Qt::Key_Delete, Qt::Key_Down, Qt::Key_Delete, Qt::Key_Up};
            if (++frames < 32) {
                QTest::keyClick(window.get(), frames % 2 == 0
                                                  ? Qt::Key_Delete
                                                  : keys[static_cast<std::size_t>(frames) % keys.size()]);
            } else if (frames == 32) {
                QVERIFY(walkTo(window.get(), u"Clear All"_s));
                QTest::keyClick(window.get(), Qt::Key_Space);
            }
        });
        window->update();
        const auto isGone = [](const QQuickItem *text) {
            return !text->property("text").toString().contains(u"nonex");
        };
        QTRY_VERIFY(frames > 32 && std::ranges::all_of(texts(), isGone));
        QVERIFY2(found.isEmpty(), qUtf8Printable(found.join(u'\n')));
    }

    void longMessagesScrollWithTheKeyboard() {
        const TestFolder folder;
        const Path zip = folder.write("zip", "#!/bin/sh\nseq 500\nexit 1\n");
        std::filesystem::permissions(zip, std::filesystem::perms::owner_all);
        ContentView view(systemDesktop(), {.zip = zip});
        view.setOutputDir(fileUrl(folder.path()));
        view.dropFiles(uriList({fileUrl(zip)}));
        QTRY_VERIFY(!view.createDisabled());
        QQmlEngine engine;
        const std::unique_ptr<QQuickWindow> window = openMainWindow(engine, view);
        window->requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
        view.create();
        QTRY_VERIFY(!view.mgr()->isCreating() && !view.statusLines().isEmpty());
        QVERIFY(walkTo(window.get(), u"Create"_s));
        QTest::keyClick(window.get(), Qt::Key_Tab);
        const QQuickItem *lines = window->activeFocusItem();
        const auto isAt = [&](const char *end) { return lines->property(end).toBool(); };
        QTRY_VERIFY(isAt("atYEnd"));
        for (const Qt::Key key : {Qt::Key_Up, Qt::Key_PageUp}) {
            QTest::keyClick(window.get(), key);
            QVERIFY(!isAt("atYEnd"));
            QTest::keyClick(window.get(), Qt::Key_End);
            QVERIFY(isAt("atYEnd"));
        }
        QTest::keyClick(window.get(), Qt::Key_Home);
        QVERIFY(isAt("atYBeginning"));
        view.setMode(AppMode::extract); // it vanishes with the message
        QTRY_VERIFY(focused(window.get()).startsWith(u"Browse Archive"));
    }

    void focusIsNeverLost() {
        ContentView view;
        QQmlEngine engine;
        const std::unique_ptr<QQuickWindow> window = openMainWindow(engine, view);
        window->requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
        const auto isAt = [&](const char *label) {
            return focused(window.get()).startsWith(QString::fromUtf8(label));
        };
        view.dropFiles(uriList({fileUrl("/nonexistent/a"), fileUrl("/nonexistent/b")}));
        QTRY_COMPARE(view.files()->count(), 2);
        QVERIFY(walkTo(window.get(), u"2 items"_s));
        QTest::keyClick(window.get(), Qt::Key_End);
        QTest::keyClick(window.get(), Qt::Key_Backspace);
        QCOMPARE(view.files()->countText(), u"1 item"_s);
        QTest::keyClick(window.get(), Qt::Key_Delete);
        QTRY_VERIFY(isAt("Browse Files"));
        view.dropFiles(uriList({fileUrl("/nonexistent/a")}));
        QTRY_COMPARE(view.files()->count(), 1);
        QVERIFY(walkTo(window.get(), u"Clear All"_s));
        QTest::keyClick(window.get(), Qt::Key_Space);
        QTRY_VERIFY(isAt("Browse Files"));
        QVERIFY(walkTo(window.get(), u"Change"_s));
        QTest::keyClick(window.get(), Qt::Key_2, Qt::ControlModifier);
        QTRY_VERIFY(isAt("Browse Archive"));
        view.setArchiveFile(fileUrl("/nonexistent/a.zip"));
        QTest::keyClick(window.get(), Qt::Key_Tab);
        QTest::keyClick(window.get(), Qt::Key_Space);
        QVERIFY(view.extractDisabled());
        QTRY_VERIFY(isAt("Browse Archive"));
        QTest::keyClick(window.get(), Qt::Key_1, Qt::ControlModifier);
        QTRY_VERIFY(isAt("Change")); // as before
    }
};

int main(int argc, char *argv[]) {
    qputenv("QT_FONT_DPI", "144"); // of the texts alone, with the next line
    qputenv("QT_ENABLE_HIGHDPI_SCALING", "0");
    qputenv("QT_QUICK_BACKEND", "software");
    QApplication application(argc, argv);
    QQuickStyle::setStyle(QStringLiteral("Basic"));
    LongWords translator;
    QCoreApplication::installTranslator(&translator);
    LayoutTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "layout_test.moc"
