// render_icon SVG SIDE PNG: draws an icon as a square image of SIDE pixels.

#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdio>
#include <cstdlib>

int main(int argc, char *argv[]) {
    if (argc != 4) {
        std::fputs("Usage: render_icon SVG SIDE PNG\n", stderr);
        return EXIT_FAILURE;
    }
    QSvgRenderer icon(QString::fromLocal8Bit(argv[1]));
    const int side = std::atoi(argv[2]);
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    icon.render(&painter);
    painter.end();
    if (!icon.isValid() || !image.save(QString::fromLocal8Bit(argv[3]), "PNG")) {
        std::fprintf(stderr, "render_icon: %s cannot be made of %s\n", argv[3], argv[1]);
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
