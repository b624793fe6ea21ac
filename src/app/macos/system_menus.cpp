#include "app/macos/system_menus.h"

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

} // namespace

SystemMenus::SystemMenus(MenuCommands &commands)
    : bar_(std::make_unique<QMenuBar>()) {
    QMenu &help = *bar_->addMenu(QMenuBar::tr("Help"));
    add(help, *commands.about(), QAction::AboutRole);
    add(help, *commands.checkForUpdates(), QAction::ApplicationSpecificRole);
    add(help, *commands.quit(), QAction::QuitRole);
    add(help, *commands.help(), QAction::NoRole);
    help.addSeparator();
    add(help, *commands.visit(), QAction::NoRole);
}

} // namespace stowlark
