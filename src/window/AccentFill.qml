import QtQuick

/// A rounded rectangle that blends from one colour at the left to another at the right.
Rectangle {
    id: root

    property color from: Theme.accentStart
    property color to: Theme.accentEnd

    gradient: Gradient {
        orientation: Gradient.Horizontal

        GradientStop {
            position: 0
            color: root.from
        }

        GradientStop {
            position: 1
            color: root.to
        }
    }
}
