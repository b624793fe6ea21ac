#include "app/macos/system_menus.h"

#include "desktop/macos/appkit_window.h"

#include <QGuiApplication>
#include <QKeyEvent>

#include <array>

namespace stowlark {
namespace {

/// Actions with a role are moved to the application's menu, whichever menu they are in.
void add(QMenu &menu, MenuCommand &command, QAction::MenuRole role) {
    QAction *action = menu.addAction(command.label());
    action->setMenuRole(role);
    if (!command.keys().isEmpty()) {
        action->setShortcut(QKeySequence(command.keys().first()));
    }
    QObject::connect(action, &QAction::triggered, &command, &MenuCommand::trigger);
}

/// An item that does what AppKit's own of this selector does.
void add(QMenu &menu, const QString &label, const QKeySequence &keys, const char *selector) {
    QAction *action = menu.addAction(label);
    action->setShortcut(keys);
    QObject::connect(action, &QAction::triggered, action, [selector] { appkit::sendAction(selector); });
}

struct EditItem {
    const char *label;
    QKeySequence::StandardKey keys;
    const char *selector;
};

constexpr std::array editItems{EditItem{"Undo", QKeySequence::Undo, "undo:"},
                               EditItem{"Redo", QKeySequence::Redo, "redo:"},
                               EditItem{"Cut", QKeySequence::Cut, "cut:"},
                               EditItem{"Copy", QKeySequence::Copy, "copy:"},
                               EditItem{"Paste", QKeySequence::Paste, "paste:"},
                               EditItem{"Delete", QKeySequence::Delete, "delete:"},
                               EditItem{"Select All", QKeySequence::SelectAll, "selectAll:"}};

/// The window's fields know keys and none of AppKit's actions; its panels are the other way round, and leave
/// no object of Qt's in focus.
void edit(const EditItem &item) {
    QObject *focus = QGuiApplication::focusObject();
    if (focus == nullptr) {
        appkit::sendAction(item.selector);
        return;
    }
    const QKeyCombination keys = QKeySequence(item.keys)[0];
    QKeyEvent press(QEvent::KeyPress, keys.key(), keys.keyboardModifiers());
    QCoreApplication::sendEvent(focus, &press);
}

void addEditItems(QMenu &menu) {
    for (const EditItem &item : editItems) {
        QAction *action = menu.addAction(QMenuBar::tr(item.label)); // by which Qt knows some of them
        if (item.keys != QKeySequence::Delete) {                    // that key is the field's alone
            action->setShortcut(item.keys);
        }
        QObject::connect(action, &QAction::triggered, action, [&item] { edit(item); });
        if (item.keys == QKeySequence::Redo) {
            menu.addSeparator();
        }
    }
}

} // namespace

SystemMenus::SystemMenus(MenuCommands &commands)
    : bar_(std::make_unique<QMenuBar>()) {
    add(*bar_->addMenu(QMenuBar::tr("File")), QMenuBar::tr("Close"), QKeySequence::Close, "performClose:");
    addEditItems(*bar_->addMenu(QMenuBar::tr("Edit")));
    QMenu &window = *bar_->addMenu(QMenuBar::tr("Window"));
    add(window, QMenuBar::tr("Minimize"), Qt::CTRL | Qt::Key_M, "performMiniaturize:");
    add(window, QMenuBar::tr("Zoom"), {}, "performZoom:");
    window.addSeparator();
    add(window, QMenuBar::tr("Bring All to Front"), {}, "arrangeInFront:");
    QMenu &help = *bar_->addMenu(QMenuBar::tr("Help"));
    add(help, *commands.about(), QAction::AboutRole);
    add(help, *commands.checkForUpdates(), QAction::ApplicationSpecificRole);
    add(help, *commands.quit(), QAction::QuitRole);
    add(help, *commands.help(), QAction::NoRole);
    help.addSeparator();
    add(help, *commands.visit(), QAction::NoRole);
}

} // namespace stowlark
