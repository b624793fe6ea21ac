import QtQuick

/// The outline of a surface on a light desktop, where its white alone would not show, nor how that is when it is
/// pressed.
Rectangle {
    property bool pressed: false

    anchors.fill: parent
    visible: Theme.isLight
    color: Theme.faded(Theme.primary, pressed ? 0.12 : 0)
    border.color: Theme.faded(Theme.primary, 0.12)

    Behavior on color {
        ColorAnimation {
            duration: 100
            easing.type: Easing.InOutQuad
        }
    }
}
