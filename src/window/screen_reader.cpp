#include "window/screen_reader.h"

#include <QAccessible>

namespace stowlark {

void ScreenReader::speak(QQuickItem *item) {
    if (item->isVisible()) {
        QAccessibleEvent event(item, QAccessible::ObjectShow);
        QAccessible::updateAccessibility(&event);
    }
}

void ScreenReader::follow(QQuickItem *item) {
    QAccessibleEvent event(item, QAccessible::Focus);
    QAccessible::updateAccessibility(&event);
}

} // namespace stowlark
