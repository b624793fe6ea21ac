#include "desktop/alert.h"
#include "desktop/macos/appkit_alert.h"
#include "desktop/macos/appkit_open_panel.h"
#include "desktop/macos/appkit_services.h"
#include "desktop/macos/appkit_symbol.h"
#include "desktop/macos/appkit_workspace.h"
#include "desktop/open_panel.h"
#include "desktop/services.h"
#include "desktop/symbol_images.h"
#include "desktop/workspace.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace stowlark;

namespace {

const char *chosen = nullptr;
QByteArrayList given;
std::function<void(const char *)> service;

} // namespace

namespace stowlark::appkit {

void runAlert(const char *title, const char *message, int style) {
    given << title << message << QByteArray::number(style);
}

void runOpenPanel(TakeUrls take, void *context) {
    if (chosen != nullptr) {
        take(context, chosen);
    }
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

    void hand_over_urls() {
        QVERIFY(chooseFilesAndFolders({}).isReady());
        const auto take = [](QList<QUrl> urls) { given << QUrl::toStringList(urls).join(u'|').toUtf8(); };
        chooseFilesAndFolders({}).then(take);
        chosen = "file:///a%20%E2%80%9Cb%E2%80%9D%23\nfile:///tmp/folder/";
        chooseFilesAndFolders({}).then(take);
        QStringList taken;
        provideServices([&taken](const QStringList &urls) { taken = urls; });
        service(chosen);
        QCOMPARE(given, (QByteArrayList{"", "file:///a “b”%23|file:///tmp/folder/"}));
        QCOMPARE(taken, (QStringList{u"file:///a%20%E2%80%9Cb%E2%80%9D%23"_s, u"file:///tmp/folder/"_s}));
        reveal(QUrl::fromEncoded("file:///a%20%E2%80%9Cb%E2%80%9D%23"));
        QCOMPARE(given.last(), "file:///a%20%E2%80%9Cb%E2%80%9D%23");
    }

    void show_alerts() {
        QVERIFY(showAlert(u"é"_s, u"…"_s, AlertStyle::warning).isReady());
        QVERIFY(showAlert(u"a"_s, u"b"_s, AlertStyle::informational).isReady());
        QCOMPARE(given, (QByteArrayList{"é", "…", "0", "a", "b", "1"}));
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
