import QtQuick
import QtQuick.Controls.Basic

/// A small round button with a cross.
AbstractButton {
    id: root

    property real diameter: 22
    property real symbolSize: 10

    implicitWidth: diameter
    implicitHeight: diameter
    Keys.onReturnPressed: root.clicked()
    Keys.onEnterPressed: root.clicked()
    Accessible.onPressAction: root.clicked()

    background: Rectangle {
        radius: width / 2
        color: Theme.white(0.1)
        border.width: root.visualFocus ? 2 : 0
        border.color: Theme.accentStart

        Edge {
            radius: parent.radius
            visible: Theme.isLight
            border.width: root.visualFocus ? 0 : 1
            pressed: root.down
        }
    }

    Symbol {
        anchors.centerIn: parent
        name: "xmark"
        size: root.symbolSize
        color: root.down ? Theme.primary : Theme.secondary
    }
}
