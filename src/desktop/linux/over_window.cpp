#include "desktop/linux/over_window.h"

#include <QGuiApplication>
#include <QWindow>

#include <algorithm>

namespace stowlark {

void showOverWindow(QDialog &dialog) {
    dialog.setWindowModality(Qt::ApplicationModal);
    dialog.winId(); // makes its window
    QWindow *window = QGuiApplication::focusWindow();
    if (window == nullptr) { // another program has the focus
        const QWindowList windows = QGuiApplication::topLevelWindows();
        const auto visible = std::ranges::find_if(windows, &QWindow::isVisible);
        window = visible == windows.end() ? nullptr : *visible;
    }
    dialog.windowHandle()->setTransientParent(window);
    dialog.show();
}

} // namespace stowlark
