// Drops all files in the folders of a folder on the real window, without a screen, and scrolls through them:
// stowlark_window_turns FOLDER

#include "app/stowlark_app.h"
#include "longest_gap.h"

#include "foundation/file_url.h"

#include <QApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QQuickItem>
#include <QQuickStyle>

#include <cstdio>
#include <fstream>
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
        QElapsedTimer frame;
        frame.start();
        while (frame.elapsed() < 16) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 5);
        }
    }
    gap.turn();
    std::printf("Scrolling, %d steps: longest gap %.1f ms\n", pages, gap.milliseconds());
}

void measureAdding(StowlarkApp &program, const Path &folder) {
    const QByteArray list = uriList(folder);
    QQuickWindow *window = program.window();
    const FileListModel &files = *program.view().files();
    LongestGap gap;
    const double before = residentKilobytes();
    QElapsedTimer time;
    time.start();
    drop(window, list);
    while (files.count() == 0 || files.isAdding()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 5);
    }
    const double milliseconds = static_cast<double>(time.nsecsElapsed()) / 1e6;
    gap.turn();
    std::printf("Dropping on the window, %s: %.0f ms, limit 2000 ms; longest gap %.1f ms, limit 50 ms; "
                "%.2f KB for each, limit 1 KB\n",
                qUtf8Printable(files.countText()), milliseconds, gap.milliseconds(),
                (residentKilobytes() - before) / files.count());
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
    stowlark::StowlarkApp program;
    if (program.window() == nullptr) {
        return 1;
    }
    for (int i = 0; i < 100; ++i) { // until the window is drawn
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 5);
    }
    stowlark::measureAdding(program, argv[1]);
    stowlark::measureScrolling(program.window());
    return 0;
}
