import QtQuick

/// A line between two parts.
Rectangle {
    implicitHeight: 1
    color: Theme.faded(Theme.primary, 0.1)
}
