import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Stowlark.Window

/// A button that blends between the accent colours.
Button {
    id: root

    required property real textSize
    required property real radius
    /// Of the shadow in the first accent colour; 0 for none.
    property real shadow: 0

    font.pointSize: Theme.points(textSize)
    font.weight: Font.DemiBold
    opacity: down ? 0.8 : 1
    Accessible.onPressAction: root.clicked()
    Keys.onReturnPressed: root.clicked()
    Keys.onEnterPressed: root.clicked()

    contentItem: RowLayout {
        spacing: 5

        Symbol {
            name: "arrow.down.circle.fill"
            size: root.textSize
            color: "white"
        }

        Text {
            Layout.fillWidth: true
            elide: Text.ElideRight
            text: root.text
            font: root.font
            color: "white"
        }
    }

    background: Item {
        SoftShadow {
            y: 2
            visible: root.shadow > 0
            width: parent.width
            height: parent.height
            radius: root.radius
            blur: root.shadow
            color: Theme.faded(Theme.accentStart, 0.4)
        }

        AccentFill {
            anchors.fill: parent
            radius: root.radius
            from: Theme.accentStart
            to: Theme.accentEnd
        }

        Rectangle {
            anchors.fill: parent
            visible: root.visualFocus
            radius: root.radius
            color: "transparent"
            border.width: 2
            border.color: Theme.primary
        }
    }
}
