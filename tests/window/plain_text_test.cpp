#include "foundation/file_url.h"
#include "support/layout.h"
#include "support/test_folder.h"
#include "window/main_window.h"
#include "window/uri_list.h"

#include <QApplication>
#include <QQuickStyle>
#include <QTest>

using namespace stowlark;

namespace {

const QString markup = QStringLiteral("<b>");

void collectMarked(const QQuickItem *item, QList<QQuickItem *> &marked) {
    for (QQuickItem *child : item->childItems()) {
        if (child->property("text").toString().contains(markup) && child->property("textFormat").isValid()) {
            marked += child;
        }
        collectMarked(child, marked);
    }
}

} // namespace

/// What others may write: names, what tools say, the feed.
class PlainTextTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void nothingOfOthersIsMarkup() {
        const TestFolder folder;
        const Path file = folder.write("<b>folder/<b>file.zip", "x");
        const Path tool = folder.writeTool("fails", "echo '<b>what it says'; exit 1\n");
        UpdateChecker updater({.showAlert = {}, .openURL = {}});
        updater.setAvailable(AppRelease{.version = QStringLiteral("<b>9"),
                                        .releaseNotes = QStringLiteral("<b>notes"),
                                        .releaseDate = QStringLiteral("<b>date")});
        AppState state;
        ContentView view(systemDesktop(), {.zip = tool, .unzip = tool}, state, updater);
        view.setOutputDir(fileUrl(folder.path() / "<b>folder"));
        view.dropFiles(uriList({fileUrl(file)}));
        view.setArchiveFile(fileUrl(file));
        view.setProperty("showReleaseNotes", true);
        QQmlEngine engine;
        const std::unique_ptr<QQuickWindow> window = openMainWindow(engine, view);
        QVERIFY(window != nullptr && QTest::qWaitForWindowExposed(window.get()));
        for (const AppMode mode : {AppMode::compress, AppMode::extract}) {
            view.setMode(mode);
            QTRY_VERIFY(!view.createDisabled());
            mode == AppMode::compress ? view.create() : view.extract();
            QTRY_VERIFY(!view.mgr()->isCreating() && view.mgr()->statusMessage() == u"<b>what it says");
            QList<QQuickItem *> marked;
            // The banner's version and notes, the sheet's version, date and notes, the file's name and
            // folder, the folder to write to, the status.
            QTRY_VERIFY((marked.clear(), collectMarked(window->contentItem(), marked), marked.size() >= 9));
            for (const QQuickItem *item : marked) {
                QVERIFY2(item->property("textFormat").toInt() == Qt::PlainText,
                         qPrintable(item->property("text").toString()));
            }
        }
    }
};

int main(int argc, char *argv[]) {
    qputenv("QT_QUICK_BACKEND", "software");
    const QApplication application(argc, argv);
    QQuickStyle::setStyle(QStringLiteral("Basic"));
    PlainTextTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "plain_text_test.moc"
