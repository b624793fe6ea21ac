#include "desktop/workspace.h"

#include "desktop/macos/appkit_workspace.h"

namespace stowlark {

void reveal(const QUrl &item) {
    appkit::reveal(item.toEncoded().constData());
}

} // namespace stowlark
