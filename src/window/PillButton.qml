import QtQuick
import QtQuick.Controls.Basic

Button {
    id: root

    property bool small: false

    font.pointSize: Theme.points(small ? 11 : 13)
    font.weight: Font.Medium
    horizontalPadding: small ? 10 : 14
    verticalPadding: small ? 5 : 7
    Keys.onReturnPressed: root.clicked()
    Keys.onEnterPressed: root.clicked()
    Accessible.onPressAction: root.clicked()

    contentItem: Text {
        text: root.text
        font: root.font
        color: Theme.primary
        horizontalAlignment: Text.AlignHCenter
    }

    background: Rectangle {
        radius: height / 2
        color: Theme.white(root.down ? 0.12 : 0.09)
        border.width: root.visualFocus ? 2 : 1
        border.color: root.visualFocus ? Theme.accentStart : Theme.laidOver(Theme.white(0.09), Theme.white(0.13))

        Edge {
            radius: parent.radius
            visible: Theme.isLight
            border.width: root.visualFocus ? 0 : 1
            pressed: root.down
        }

        Behavior on color {
            ColorAnimation {
                duration: 100
                easing.type: Easing.InOutQuad
            }
        }
    }
}
