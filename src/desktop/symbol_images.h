#pragma once

#include <QColor>
#include <QImage>
#include <QString>

namespace stowlark {

/// The symbol in one colour, `side` pixels wide and high: the system's own of this name where it has one,
/// else what the SVG file `drawing` shows. Null if there is neither. The size of the text that it goes with
/// is three quarters of `side`.
QImage symbolImage(const QString &name, const QString &drawing, int side, const QColor &color);

/// The system's own symbol, in black; null where it has none of this name. One source per system.
QImage systemSymbol(const QString &name, int side);

} // namespace stowlark
