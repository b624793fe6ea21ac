#include "desktop/symbol_images.h"

#include "desktop/macos/appkit_symbol.h"

namespace stowlark {

QImage systemSymbol(const QString &name, int side) {
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    const auto weight = name == u"xmark" ? appkit::SymbolWeight::black : appkit::SymbolWeight::regular;
    const bool drawn = appkit::drawSymbol(name.toUtf8().constData(), weight, side, image.bits());
    return drawn ? image : QImage();
}

} // namespace stowlark
