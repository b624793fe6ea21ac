import QtQuick
import QtQuick.Controls.Basic
import Stowlark.Window

/// The title of a menu.
MenuBarItem {
    id: root

    padding: 4
    leftPadding: 8
    rightPadding: 8
    font.pointSize: Theme.points(13)
    Accessible.onRoleChanged: Accessible.role = Accessible.MenuItem // Qt makes it a second bar
    Accessible.name: contentItem.text // without the mark of its letter

    contentItem: Label {
        text: root.text.replace("&", "")
        font: root.font
        color: Theme.primary
    }

    background: Rectangle {
        radius: 6
        color: Theme.faded(Theme.primary, root.highlighted ? 0.12 : 0)
        border.width: root.visualFocus ? 2 : 0
        border.color: Theme.accentStart
    }
}
