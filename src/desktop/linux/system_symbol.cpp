#include "desktop/symbol_images.h"

namespace stowlark {

QImage systemSymbol(const QString & /*name*/, int /*side*/) {
    return {};
}

} // namespace stowlark
