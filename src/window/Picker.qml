import QtQuick
import QtQuick.Controls.Basic

/// Chooses one of a few texts.
ComboBox {
    id: root

    implicitHeight: Math.max(32, implicitContentHeight + 12)
    font.pointSize: Theme.points(13)
    leftPadding: 0 // the text has its own

    background: Rectangle {
        radius: 7
        color: Theme.white(root.down ? 0.12 : 0.08)
        border.width: root.visualFocus ? 2 : 1
        border.color: root.visualFocus ? Theme.accentStart : Theme.faded(Theme.primary, 0.13)
    }
}
