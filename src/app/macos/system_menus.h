#pragma once

#include "app/menu_commands.h"

#include <QMenuBar>

#include <memory>

namespace stowlark {

/// The menus at the top of the screen. The commands must outlive them.
class SystemMenus {
public:
    explicit SystemMenus(MenuCommands &commands);

private:
    std::unique_ptr<QMenuBar> bar_;
};

} // namespace stowlark
