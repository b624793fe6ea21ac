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
        QMap<QString, QAction *> items;
        for (const auto *menu : QApplication::topLevelWidgets()) {
            for (QAction *item : menu->inherits("QMenu") ? menu->actions() : QList<QAction *>()) {
                items[item->text()] = item;
            }
        }
        for (const char *item : {"Close", "Undo", "Paste", "Minimize"}) {
            items[QString::fromLatin1(item)]->trigger();
        }
        QCOMPARE(sent, (QByteArrayList{"performClose:", "undo:", "paste:", "performMiniaturize:"}));

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
        QCOMPARE(sent.size(), 4);
    }
};

QTEST_MAIN(MenusTest)

#include "menus_test.moc"
