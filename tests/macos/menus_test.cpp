#include "app/macos/system_menus.h"
#include "desktop/macos/appkit_window.h"

#include <QApplication>
#include <QLineEdit>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace stowlark;

namespace {

QByteArrayList sent;

} // namespace

void stowlark::appkit::sendAction(const char *selector) {
    sent << selector;
}

class MenusTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void reach_fields_and_panels() {
        AppState state;
        UpdateChecker updater({});
        MenuCommands commands(state, updater, {});
        const SystemMenus menus(commands);
        QMap<QString, QAction *> items; // by their texts
        for (const QWidget *menu : QApplication::topLevelWidgets()) {
            if (menu->inherits("QMenu") && menu->property("title") != u"Help"_s) {
                for (QAction *item : menu->actions()) {
                    items[item->text()] = item;
                }
            }
        }
        items.remove({}); // separators
        QStringList all;
        for (QAction *item : items) {
            item->trigger();
            all += item->text() + (item->shortcut().isEmpty() ? u" "_s : u" with keys "_s) +
                   QString::fromLatin1(sent.takeLast());
        }
        QCOMPARE(all.join(u", "_s),
                 u"Bring All to Front arrangeInFront:, Close with keys performClose:, "
                 "Copy with keys copy:, Cut with keys cut:, Delete delete:, "
                 "Minimize with keys performMiniaturize:, Paste with keys paste:, "
                 "Redo with keys redo:, Select All with keys selectAll:, Undo with keys undo:, "
                 "Zoom performZoom:"_s);

        QLineEdit field(u"abc"_s);
        field.show();
        field.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&field));
        QStringList texts;
        for (const char *item :
             {"Select All", "Copy", "Delete", "Undo", "Redo", "Paste", "Select All", "Cut"}) {
            items[QString::fromLatin1(item)]->trigger();
            texts += field.text();
        }
        QCOMPARE(texts.join(u' '), u"abc abc  abc  abc abc "_s);
        QVERIFY(sent.isEmpty());
    }
};

QTEST_MAIN(MenusTest)

#include "menus_test.moc"
