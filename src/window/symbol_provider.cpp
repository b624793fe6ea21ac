#include "window/symbol_provider.h"

#include "desktop/symbol_images.h"

#include <QStringList>

namespace stowlark {

SymbolProvider::SymbolProvider()
    : QQuickImageProvider(Image) {}

QImage SymbolProvider::requestImage(const QString &id, QSize *size, const QSize &requestedSize) {
    const QStringList parts = id.split(u'/');
    const QString drawing = QStringLiteral(":/qt/qml/Stowlark/Window/%1.svg");
    QImage image = parts.size() == 3
                       ? symbolImage(parts[0], drawing.arg(QStringLiteral("symbols/") + parts[0]),
                                     parts[1].toInt(), QColor(u'#' + parts[2]))
                       : drawnImage(drawing.arg(id), requestedSize.width());
    if (size != nullptr) {
        *size = image.size();
    }
    return image;
}

} // namespace stowlark
