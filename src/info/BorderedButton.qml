import QtQuick
import QtQuick.Controls.Basic
import Stowlark.Window

/// A button as dialogs have them.
Button {
    id: root

    font.pointSize: Theme.points(13)
    horizontalPadding: 14
    verticalPadding: 4
    Keys.onReturnPressed: root.clicked()
    Keys.onEnterPressed: root.clicked()
    Accessible.onPressAction: root.clicked()

    contentItem: Text {
        text: root.text
        font: root.font
        color: Theme.primary
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
    }

    background: Rectangle {
        radius: 6
        color: Theme.isLight ? Qt.darker("white", root.down ? 1.1 : 1) : Theme.white(root.down ? 0.22 : 0.14)
        border.width: root.visualFocus ? 2 : 1
        border.color: root.visualFocus ? Theme.accentStart : Theme.faded(Theme.primary, 0.16)
    }
}
