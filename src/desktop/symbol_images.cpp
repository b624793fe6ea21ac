#include "desktop/symbol_images.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

namespace stowlark {

QImage drawnImage(const QString &drawing, int side) {
    if (!QFile::exists(drawing)) { // of which the renderer would warn
        return {};
    }
    QSvgRenderer renderer(drawing);
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter);
    return image;
}

QImage symbolImage(const QString &name, const QString &drawing, int side, const QColor &color) {
    QImage image = systemSymbol(name, side);
    if (image.isNull()) {
        image = drawnImage(drawing, side);
    }
    if (!image.isNull()) {
        QPainter painter(&image);
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(image.rect(), color);
    }
    return image;
}

} // namespace stowlark
