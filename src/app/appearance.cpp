#include "app/appearance.h"

#include <QGuiApplication>
#include <QPalette>

namespace stowlark {

#ifdef Q_OS_MACOS // where there always is a desktop

void applyAppearance() {}

#else

namespace {

QPalette darkPalette() {
    const QColor window(30, 30, 32);
    const QColor text(235, 235, 240);
    QPalette palette(text, QColor(58, 58, 62), QColor(90, 90, 96), QColor(20, 20, 22), QColor(44, 44, 48),
                     text, Qt::white, QColor(38, 38, 41), window);
    palette.setColor(QPalette::Highlight, QColor(59, 130, 245));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::PlaceholderText, QColor(235, 235, 240, 110));
    palette.setColor(QPalette::ToolTipBase, window);
    palette.setColor(QPalette::ToolTipText, text);
    return palette;
}

} // namespace

void applyAppearance() {
    if (qEnvironmentVariableIsEmpty("XDG_CURRENT_DESKTOP")) {
        QGuiApplication::setPalette(darkPalette());
    }
}

#endif

} // namespace stowlark
