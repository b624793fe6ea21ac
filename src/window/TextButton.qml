import QtQuick
import QtQuick.Controls.Basic

/// A button that is only its text.
AbstractButton {
    id: root

    property color color: Theme.primary

    font.pointSize: Theme.points(12)
    font.weight: Font.Medium
    padding: 4
    leftInset: Math.min(0, padding - 4) // for the mark of the focus
    rightInset: leftInset
    topInset: leftInset / 2
    bottomInset: topInset
    opacity: down ? 0.6 : 1
    Keys.onReturnPressed: root.clicked()
    Keys.onEnterPressed: root.clicked()
    Accessible.onPressAction: root.clicked()

    contentItem: Text {
        text: root.text
        font: root.font
        color: root.color
    }

    background: Rectangle {
        radius: 5
        color: "transparent"
        border.width: root.visualFocus ? 2 : 0
        border.color: Theme.accentStart
    }
}
