// The layers see the shadow by its id, which qmllint of Qt 6.4 cannot follow.
// qmllint disable unqualified
import QtQuick

/// The blurred shadow of a rounded rectangle of its own place and size, in layers: without a shader.
Item {
    id: root

    required property real radius
    required property real blur
    required property color color

    Repeater {
        id: layers

        model: root.color.a > 0 ? Math.ceil(2 * root.blur) : 0

        Rectangle {
            required property int index
            readonly property real step: 2 * (index + 0.5) / layers.count - 1 // from the outermost, -1, to 1
            readonly property real share: 1.5 * (1 - step * step) / layers.count // of the whole darkness

            anchors.fill: parent
            anchors.margins: root.blur * step
            radius: Math.max(0, root.radius - root.blur * step)
            color: Theme.faded(root.color, 1 - Math.pow(1 - root.color.a, share))
        }
    }
}
