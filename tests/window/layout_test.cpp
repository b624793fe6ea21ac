#include "foundation/file_url.h"
#include "support/layout.h"
#include "window/main_window.h"
#include "window/uri_list.h"

#include <QApplication>
#include <QQuickStyle>
#include <QTest>

using namespace stowlark;

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
        const std::string longest(255, 'W');
        Path deep = "/";
        for (int i = 0; i < 15; ++i) {
            deep /= longest;
        }
        const Tools none{.zip = "/nonexistent", .searchFolders = {}};
        ContentView view(systemDesktop(), none);
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
        const auto isRight = [&] { return faults(window->contentItem()).isEmpty(); };
        const bool became = QTest::qWaitFor(isRight, 3000);
        QVERIFY2(became, qUtf8Printable(faults(window->contentItem()).join(u'\n')));
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
