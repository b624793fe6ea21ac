// Makes the application's icon set: the drawing at all sizes, each as a PNG in an Apple icon image container.
//   make_icns DRAWING.svg ICONS.icns

#include <QBuffer>
#include <QDataStream>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <array>
#include <iostream>

namespace {

/// An entry of the container that holds a PNG of `side` pixels.
struct Entry {
    const char *type;
    int side;
};
constexpr std::array entries{
    Entry{"icp4", 16}, Entry{"icp5", 32}, Entry{"ic07", 128}, Entry{"ic08", 256}, Entry{"ic09", 512},
    Entry{"ic11", 32}, Entry{"ic12", 64}, Entry{"ic13", 256}, Entry{"ic14", 512}, Entry{"ic10", 1024},
};

/// The square that an icon fills of 1024 pixels; the rest is a margin, as all of the Dock's icons have it.
constexpr double square = 824.0 / 1024;

QByteArray png(QSvgRenderer &drawing, int side) {
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    const double margin = side * (1 - square) / 2;
    drawing.render(&painter, QRectF(margin, margin, side * square, side * square));
    painter.end();
    QBuffer buffer;
    return image.save(&buffer, "PNG") ? buffer.data() : QByteArray();
}

void writeEntry(QDataStream &out, const char *type, const QByteArray &contents) {
    out.writeRawData(type, 4);
    out << static_cast<quint32>(8 + contents.size());
    out.writeRawData(contents.constData(), static_cast<int>(contents.size()));
}

} // namespace

int main(int argc, char *argv[]) {
    if (argc != 3) {
        std::cerr << "usage: make_icns DRAWING.svg ICONS.icns\n";
        return EXIT_FAILURE;
    }
    QSvgRenderer drawing(QString::fromLocal8Bit(argv[1]));
    QFile file(QString::fromLocal8Bit(argv[2]));
    if (!drawing.isValid() || !file.open(QIODevice::WriteOnly)) {
        std::cerr << "make_icns: cannot read " << argv[1] << " or write " << argv[2] << '\n';
        return EXIT_FAILURE;
    }
    QByteArray images;
    QDataStream imageStream(&images, QIODevice::WriteOnly);
    for (const auto &[type, side] : entries) {
        writeEntry(imageStream, type, png(drawing, side));
    }
    QDataStream stream(&file);
    writeEntry(stream, "icns", images);
    return file.flush() ? EXIT_SUCCESS : EXIT_FAILURE;
}
