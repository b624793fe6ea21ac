#include "desktop/over_window.h"

#include <QGuiApplication>
#include <QWindow>

namespace stowlark {

void showOverWindow(QDialog &dialog) {
    dialog.setWindowModality(Qt::ApplicationModal);
    dialog.winId(); // makes its window
    dialog.windowHandle()->setTransientParent(QGuiApplication::focusWindow());
    dialog.show();
}

} // namespace stowlark
