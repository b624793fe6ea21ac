// Drops all files in the folders of a folder on the real window, without a screen, and scrolls through them:
// stowlark_window_turns FOLDER

#include "longest_gap.h"

#include "foundation/file_url.h"
#include "window/main_window.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QDropEvent>
#include <QMimeData>
#include <QQuickItem>
#include <QQuickStyle>
#include <QTemporaryDir>

#include <cstdio>
#include <fstream>
#include <functional>
#include <unistd.h>

namespace stowlark {
namespace {

QByteArray uriList(const Path &folder) {
    QByteArray list;
    for (const auto &entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file()) {
            list += fileUrl(entry.path()).toEncoded() + "\r\n";
        }
    }
    return list;
}

double residentKilobytes() {
    long total = 0;
    long resident = 0;
    std::ifstream("/proc/self/statm") >> total >> resident;
    return static_cast<double>(resident) * static_cast<double>(::sysconf(_SC_PAGESIZE)) / 1000;
}

/// Runs the event loop, which the timer of the gaps keeps turning.
void turnUntil(const std::function<bool()> &condition) {
    while (!condition()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

/// What another program hands over: bytes, unlike what QMimeData::setData makes of them.
class ForeignData : public QMimeData {
public:
    explicit ForeignData(QByteArray list)
        : list_(std::move(list)) {}
    QStringList formats() const override { return {QStringLiteral("text/uri-list")}; }
    bool hasFormat(const QString &format) const override { return formats().contains(format); }

protected:
    QVariant retrieveData(const QString & /*format*/, QMetaType /*type*/) const override { return list_; }

private:
    QByteArray list_;
};

void drop(QQuickWindow *window, const QByteArray &list) {
    const QPoint at(window->width() / 2, 150);
    const ForeignData data(list);
    QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(window, &enter);
    QDropEvent event(at, Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(window, &event);
}

QQuickItem *visiblePane(QQuickItem *item) {
    if (item->inherits("QQuickListView") && item->isVisible()) {
        return item;
    }
    for (QQuickItem *child : item->childItems()) {
        if (QQuickItem *found = visiblePane(child)) {
            return found;
        }
    }
    return nullptr;
}

void measureScrolling(QQuickWindow *window) {
    QQuickItem *pane = visiblePane(window->contentItem());
    LongestGap gap;
    int pages = 0;
    for (; pages < 300 && !pane->property("atYEnd").toBool(); ++pages) {
        const double step = pages < 200 ? 300 : pane->property("contentHeight").toDouble() / 90;
        pane->setProperty("contentY", pane->property("contentY").toDouble() + step);
        turnUntil([end = QDeadlineTimer(16)] { return end.hasExpired(); });
    }
    gap.turn();
    std::printf("Scrolling, %d steps: longest gap %.1f ms\n", pages, gap.milliseconds());
}

void measureAdding(ContentView &view, QQuickWindow *window, const Path &folder) {
    const QByteArray list = uriList(folder);
    const FileListModel &files = *view.files();
    LongestGap gap;
    const double before = residentKilobytes();
    QElapsedTimer time;
    time.start();
    drop(window, list);
    turnUntil([&] { return files.count() > 0 && !files.isAdding(); });
    const double milliseconds = static_cast<double>(time.nsecsElapsed()) / 1e6;
    gap.turn();
    std::printf("Dropping on the window, %s: %.0f ms, limit 2000 ms; longest gap %.1f ms, limit 50 ms; "
                "%.2f KB for each, limit 1 KB\n",
                qUtf8Printable(files.countText()), milliseconds, gap.milliseconds(),
                (residentKilobytes() - before) / files.count());
}

/// A tool that lists 5 MB of files before it fails.
void measureLongMessage(ContentView &view) {
    view.clearFiles();
    view.dropFiles("file:///etc/hostname");
    LongestGap gap;
    turnUntil([&] { return !view.createDisabled(); });
    view.create();
    turnUntil([&] { return !view.mgr()->isCreating(); });
    turnUntil([end = QDeadlineTimer(500)] { return end.hasExpired(); }); // until it is drawn
    gap.turn();
    std::printf("A message of %lld characters: longest gap %.1f ms, limit 50 ms\n",
                static_cast<long long>(view.mgr()->statusMessage().size()), gap.milliseconds());
}

int measure(const Path &folder) {
    const QTemporaryDir tools;
    const Path zip = Path(tools.path().toStdString()) / "zip";
    std::ofstream(zip)
        << "#!/bin/sh\nyes '  adding: some/folder/a file of many.txt (deflated 61%)' | head -c 5000000\n"
           "exit 12\n";
    std::filesystem::permissions(zip, std::filesystem::perms::owner_all);
    ContentView view(systemDesktop(), Tools{.zip = zip});
    view.setOutputDir(fileUrl(zip.parent_path()));
    QQmlEngine engine;
    const std::unique_ptr<QQuickWindow> window = openMainWindow(engine, view);
    if (window == nullptr || !tools.isValid()) {
        return EXIT_FAILURE;
    }
    {
        LongestGap turning;
        turnUntil([end = QDeadlineTimer(1000)] { return end.hasExpired(); }); // until the window is drawn
    }
    measureAdding(view, window.get(), folder);
    measureScrolling(window.get());
    measureLongMessage(view);
    return EXIT_SUCCESS;
}

} // namespace
} // namespace stowlark

int main(int argc, char *argv[]) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    const QApplication application(argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: stowlark_window_turns FOLDER\n");
        return 2;
    }
    QQuickStyle::setStyle(QStringLiteral("Basic"));
    return stowlark::measure(argv[1]);
}
