import QtQuick
import QtQuick.Controls.Basic
import Stowlark.Window

/// The title of a menu.
MenuBarItem {
    id: root

    readonly property string shownText: text.replace("&", "") // the mark of its letter

    padding: 4
    leftPadding: 8
    rightPadding: 8
    font.pointSize: Theme.points(13)
    Accessible.onRoleChanged: Accessible.role = Accessible.MenuItem // Qt makes it a second bar
    Accessible.name: shownText

    contentItem: Label {
        text: root.shownText
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
