#pragma once

#include <QQuickItem>
#include <QtQml/qqml.h>

namespace stowlark {

/// Tells screen readers what Qt Quick 6.4 does not tell them by itself. Does nothing where none listens.
class ScreenReader : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    /// A visible item says something new; it is read as if it had just appeared.
    Q_INVOKABLE static void speak(QQuickItem *item);
    /// The arrow keys came to the item, though the keyboard's focus is with what holds it. The item has
    /// `Accessible.focused`.
    Q_INVOKABLE static void follow(QQuickItem *item);
};

} // namespace stowlark
