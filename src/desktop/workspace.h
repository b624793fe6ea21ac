#pragma once

#include <QUrl>

/// What the desktop's file manager does for us. One source per system.
namespace stowlark {

/// Shows the item, selected, in the file manager; where that cannot be asked, opens the folder that holds it.
void reveal(const QUrl &item);

} // namespace stowlark
