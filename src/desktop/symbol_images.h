#pragma once

#include <QColor>
#include <QImage>
#include <QString>

namespace stowlark {

/// The symbol in one colour, `side` pixels wide and high: the system's own of this name where it has one,
/// else what the SVG file `drawing` shows. Null if there is neither. The size of the text that it goes with
/// is three quarters of `side`.
QImage symbolImage(const QString &name, const QString &drawing, int side, const QColor &color);

/// What the SVG file shows, in its own colours, `side` pixels wide and high; null if it can't be read. Needs
/// no image plugin for SVG, which some systems have in a package of its own.
QImage drawnImage(const QString &drawing, int side);

/// The system's own symbol, in black; null where it has none of this name. One source per system.
QImage systemSymbol(const QString &name, int side);

} // namespace stowlark
