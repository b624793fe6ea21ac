import QtQuick
import QtQuick.Controls.Basic

/// A button that is only a symbol.
AbstractButton {
    id: root

    required property string symbol
    required property real size
    required property color color

    padding: 2
    opacity: down ? 0.6 : 1
    Accessible.onPressAction: root.clicked()
    Keys.onReturnPressed: root.clicked()
    Keys.onEnterPressed: root.clicked()

    contentItem: Symbol {
        name: root.symbol
        size: root.size
        color: root.color
    }

    background: Rectangle {
        radius: height / 2
        color: "transparent"
        border.width: root.visualFocus ? 2 : 0
        border.color: Theme.accentStart
    }
}
