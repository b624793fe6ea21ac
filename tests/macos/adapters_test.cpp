#include "desktop/alert.h"
#include "desktop/macos/appkit_panels.h"
#include "desktop/macos/appkit_services.h"
#include "desktop/macos/appkit_symbol.h"
#include "desktop/macos/appkit_window.h"
#include "desktop/macos/appkit_workspace.h"
#include "desktop/open_panel.h"
#include "desktop/services.h"
#include "desktop/symbol_images.h"
#include "desktop/workspace.h"

#include <QDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace stowlark;

namespace {

QByteArrayList given;
std::function<void(const char *)> service;
std::function<void(const char *)> endPanel;
std::function<void()> dismissAlert;

} // namespace

namespace stowlark::appkit {

void showAlert(const char *title, const char *message, int style, void (*done)(void *), void *context) {
    given << title << message << QByteArray::number(style);
    dismissAlert = [=] { done(context); };
}

void showOpenPanel(const OpenPanel &options, TakeUrls take, void *context) {
    QByteArray kinds;
    for (const bool isSet :
         {options.choosesFiles, options.choosesFolders, options.choosesSeveral, options.choosesArchives}) {
        kinds += isSet ? '1' : '0';
    }
    given << kinds << options.prompt << options.folder;
    endPanel = [=](const char *lines) { take(context, lines); };
}

double extendUnderTitleBar(void * /*view*/) {
    return 28;
}

void provideServices(TakeUrls take, void *context) {
    service = [=](const char *lines) { take(context, lines); };
}

void reveal(const char *url) {
    given << url;
}

bool drawSymbol(const char *name, SymbolWeight weight, int side, unsigned char *pixels) {
    given << name << (weight == SymbolWeight::black ? "black" : "regular");
    pixels[side * side * 4 - 1] = 0xff;
    return given[0] != "none";
}

} // namespace stowlark::appkit

class AdaptersTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { given.clear(); }

    void choosers_wait_for_their_panels() {
        const QUrl home = QUrl::fromLocalFile(QDir::homePath());
        QByteArrayList chosen;
        const auto takeAll = [&](const QList<QUrl> &urls) {
            chosen << QUrl::toStringList(urls).join(u'|').toUtf8();
        };
        const auto take = [&](const std::optional<QUrl> &url) {
            chosen << (url ? url->toEncoded() : "nothing");
        };
        for (const char *lines : {"file:///a%20%E2%80%9Cb%E2%80%9D%23\nfile:///tmp/folder/", ""}) {
            chooseFilesAndFolders(home).then(takeAll);
            QCoreApplication::processEvents();
            const qsizetype before = chosen.size();
            endPanel(lines);
            QCOMPARE(chosen.size(), before); // AppKit's call returns first
            QTRY_COMPARE(chosen.size(), before + 1);
        }
        chooseArchive(QUrl(u"file:///no/such folder"_s)).then(take);
        endPanel("file:///a.7z");
        chooseFolder(home).then(take);
        endPanel("");
        QTRY_COMPARE(chosen.size(), 4);
        QCOMPARE(chosen,
                 (QByteArrayList{"file:///a “b”%23|file:///tmp/folder/", "", "file:///a.7z", "nothing"}));
        const QByteArray begin = home.toEncoded();
        QCOMPARE(given, (QByteArrayList{"1110", "Add", begin, "1110", "Add", begin, "1001", "Choose", nullptr,
                                        "0100", "Choose", begin}));
    }

    void hand_over_urls() {
        QStringList taken;
        provideServices([&taken](const QStringList &urls) { taken = urls; });
        service("file:///a%20%E2%80%9Cb%E2%80%9D%23\nfile:///tmp/folder/");
        QCOMPARE(taken, (QStringList{u"file:///a%20%E2%80%9Cb%E2%80%9D%23"_s, u"file:///tmp/folder/"_s}));
        reveal(QUrl::fromEncoded("file:///a%20%E2%80%9Cb%E2%80%9D%23"));
        QCOMPARE(given.last(), "file:///a%20%E2%80%9Cb%E2%80%9D%23");
    }

    void alerts_wait_until_they_are_dismissed() {
        bool isOver = false;
        showAlert(u"é"_s, u"…"_s, AlertStyle::informational).then([&] { isOver = true; });
        QCoreApplication::processEvents();
        QVERIFY(!isOver);
        dismissAlert();
        QTRY_VERIFY(isOver);
        QCOMPARE(given, (QByteArrayList{"é", "…", "1"}));
    }

    void draw_symbols() {
        const QImage image = systemSymbol(u"xmark"_s, 6);
        QCOMPARE(image.size(), QSize(6, 6));
        QCOMPARE(image.pixel(5, 5), qRgba(0, 0, 0, 255));
        QCOMPARE(image.pixel(0, 0), 0U);
        systemSymbol(u"folder.fill"_s, 6);
        QCOMPARE(given, (QByteArrayList{"xmark", "black", "folder.fill", "regular"}));
        given.clear();
        QVERIFY(systemSymbol(u"none"_s, 6).isNull());
    }
};

QTEST_GUILESS_MAIN(AdaptersTest)

#include "adapters_test.moc"
