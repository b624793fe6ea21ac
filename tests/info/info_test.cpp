#include "foundation/site.h"
#include "info/info_module.h"
#include "support/layout.h"
#include "window/main_window.h"

#include <QApplication>
#include <QQmlComponent>
#include <QQuickStyle>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace stowlark;

namespace {

constexpr auto scene = R"(
    import QtQuick
    import Stowlark.Info
    Item {
        id: root
        required property var view
        required property var state
        Loader {
            active: root.state.showHelp
            sourceComponent: HelpView {
                view: root.view; shown: true; onDismissed: root.state.showHelp = false
            }
        }
        Loader {
            active: root.state.showAbout
            sourceComponent: AboutView {
                view: root.view; shown: true; onDismissed: root.state.showAbout = false
            }
        }
    }
)";

/// The main window with both sheets.
struct Sheets {
    QList<QUrl> opened{};
    AppState state{};
    UpdateChecker updater{{.showAlert = {}, .openURL = {}, .version = u"7.8.9"_s}};
    ContentView view{desktop(), {}, state, updater};
    QQmlEngine engine{};
    std::unique_ptr<QQuickWindow> window{};
    std::unique_ptr<QObject> item{};

    Sheets() {
        registerInfoModule();
        window = openMainWindow(engine, view);
        QQmlComponent component(&engine);
        component.setData(scene, {});
        item.reset(component.createWithInitialProperties(
            {{u"view"_s, QVariant::fromValue(&view)}, {u"state"_s, QVariant::fromValue(&state)}}));
        qobject_cast<QQuickItem *>(item.get())->setParentItem(window->contentItem());
        window->resize(580, 820);
    }
    Desktop desktop() {
        Desktop recording = systemDesktop();
        recording.openURL = [this](const QUrl &page) { opened += page; };
        return recording;
    }
    /// The open sheet, which has the focus; null if there is none.
    QQuickItem *sheet() const {
        QQuickItem *found = window->activeFocusItem();
        while (found != nullptr && !found->inherits("QQuickPopupItem")) {
            found = found->parentItem();
        }
        return found;
    }
    bool isOpen() const { return state.showHelp() || state.showAbout() || sheet() != nullptr; }
    QQuickItem *text(const QString &label) const {
        for (QQuickItem *found : visibleTexts(sheet())) {
            if (found->property("text").toString() == label) {
                return found;
            }
        }
        return nullptr;
    }
    void click(const QQuickItem *target) const { clickAt(inWindow(target).center()); }
    void clickAt(QPointF point) const {
        QTest::mouseClick(window.get(), Qt::LeftButton, {}, point.toPoint());
    }
    void press(Qt::Key key) const { QTest::keyClick(window.get(), key); }
};

} // namespace

class InfoTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"."_s)); }

    void helpScrollsBetweenTitleAndFooter() {
        Sheets sheets;
        const auto top = [&](const QString &label) { return inWindow(sheets.text(label)).top(); };
        for (int showing = 1; showing <= 2; ++showing) {
            sheets.state.setShowHelp(true);
            QTRY_VERIFY(sheets.sheet() != nullptr);
            QCOMPARE(sheets.sheet()->size(), QSizeF(400, 360));
            QTRY_VERIFY(top(u"DMG"_s) > top(u"Need more help?"_s)); // all is laid out
            const double first = top(u"How to use"_s);
            QVERIFY(first > inWindow(sheets.text(u"Stowlark Help"_s)).bottom());
            const double title = top(u"Stowlark Help"_s);
            const double footer = top(u"Need more help?"_s);
            sheets.press(Qt::Key_Down);
            QVERIFY(top(u"How to use"_s) < first);
            sheets.press(Qt::Key_End);
            QVERIFY(top(u"DMG"_s) < footer);
            QCOMPARE(top(u"Stowlark Help"_s), title);
            QCOMPARE(top(u"Need more help?"_s), footer);
            sheets.press(Qt::Key_PageDown);
            sheets.press(Qt::Key_PageUp);
            sheets.press(Qt::Key_PageUp);
            QCOMPARE(top(u"How to use"_s), first);
            sheets.press(Qt::Key_End);
            sheets.press(Qt::Key_Escape);
            QTRY_VERIFY(!sheets.isOpen());
        }
    }

    void closesAndOpensTheSite() {
        Sheets sheets;
        sheets.state.setShowHelp(true);
        QTRY_VERIFY(sheets.sheet() != nullptr);
        sheets.press(Qt::Key_Tab);
        sheets.press(Qt::Key_Tab);
        sheets.press(Qt::Key_Return);
        QCOMPARE(sheets.opened, QList{siteURL()});
        sheets.clickAt(inWindow(sheets.sheet()).topRight() + QPointF(-33, 33));
        QTRY_VERIFY(!sheets.isOpen());
        sheets.state.setShowAbout(true);
        QTRY_VERIFY(sheets.sheet() != nullptr);
        sheets.press(Qt::Key_Return);
        QTRY_VERIFY(!sheets.isOpen());
    }

    void aboutTellsTheVersion() {
        Sheets sheets;
        sheets.state.setShowAbout(true);
        QTRY_VERIFY(sheets.sheet() != nullptr);
        QTRY_COMPARE(sheets.sheet()->width(), 340.0);
        QVERIFY(sheets.text(u"Version 7.8.9"_s) != nullptr);
        for (const auto *row : {"ZIP · TAR.GZ · 7-Zip · RAR · DMG", "Compress & extract archives",
                                "Right-click any archive in Finder"}) {
            sheets.click(sheets.text(QString::fromUtf8(row)));
        }
        QVERIFY(sheets.opened.isEmpty());
        sheets.click(sheets.text(siteName()));
        QCOMPARE(sheets.opened, QList{siteURL()});
        sheets.click(sheets.text(u"Close"_s));
        QTRY_VERIFY(!sheets.isOpen());
    }

    void nothingClipsOrOverlaps() { // also run with texts that are enlarged by half
        Sheets sheets;
        LongWords translator;
        QCoreApplication::installTranslator(&translator);
        for (const auto show : {&AppState::setShowHelp, &AppState::setShowAbout}) {
            (sheets.state.*show)(true);
            QTRY_VERIFY(sheets.sheet() != nullptr);
            const auto isRight = [&] { return faults(sheets.sheet()).isEmpty(); };
            const bool became = QTest::qWaitFor(isRight, 3000);
            QVERIFY2(became, qUtf8Printable(faults(sheets.sheet()).join(u'\n')));
            QVERIFY(!sheets.text(siteName())->property("truncated").toBool());
            sheets.press(Qt::Key_Escape);
            QTRY_VERIFY(!sheets.isOpen());
        }
    }
};

int main(int argc, char *argv[]) {
    qputenv("QT_QUICK_BACKEND", "software");
    QApplication application(argc, argv);
    QQuickStyle::setStyle(QStringLiteral("Basic"));
    InfoTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "info_test.moc"
