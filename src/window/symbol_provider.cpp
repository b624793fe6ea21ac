#include "window/symbol_provider.h"

#include "desktop/symbol_images.h"

#include <QStringList>

namespace stowlark {

SymbolProvider::SymbolProvider()
    : QQuickImageProvider(Image) {}

QImage SymbolProvider::requestImage(const QString &id, QSize *size, const QSize & /*requestedSize*/) {
    const QStringList parts = id.split(u'/');
    if (parts.size() != 3) {
        return {};
    }
    const QString drawing = QStringLiteral(":/qt/qml/Stowlark/Window/symbols/%1.svg").arg(parts[0]);
    QImage image = symbolImage(parts[0], drawing, parts[1].toInt(), QColor(u'#' + parts[2]));
    if (size != nullptr) {
        *size = image.size();
    }
    return image;
}

} // namespace stowlark
