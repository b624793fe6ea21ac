import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts

/// The large button at the foot of a pane; it cannot be pressed while disabled or busy.
Button {
    id: root

    required property string symbol
    required property bool busy
    required property bool disabled
    required property color tint

    implicitHeight: 52
    enabled: !disabled && !busy
    font.pixelSize: 15
    font.weight: Font.DemiBold
    Accessible.description: enabled ? "" : qsTr("Not available now") // it has no state for that
    Keys.onReturnPressed: root.clicked()
    Keys.onEnterPressed: root.clicked()
    Accessible.onPressAction: if (enabled) root.clicked()

    contentItem: Item {
        RowLayout {
            anchors.centerIn: parent
            spacing: 9

            BusyIndicator {
                Layout.preferredWidth: 20
                Layout.preferredHeight: 20
                padding: 0
                visible: root.busy
                running: root.busy
                Accessible.ignored: true
                palette.dark: "white"
            }

            Symbol {
                visible: !root.busy
                name: root.symbol
                size: 15
                color: "white"
            }

            Text {
                text: root.text
                font: root.font
                color: "white"
            }
        }
    }

    background: Item {
        SoftShadow {
            y: 5
            width: parent.width
            height: parent.height
            radius: 14
            blur: 8
            color: Theme.faded(root.tint, root.disabled ? 0 : 0.4)

            Behavior on color {
                ColorAnimation {
                    duration: 200
                    easing.type: Easing.InOutQuad
                }
            }
        }

        Rectangle {
            anchors.fill: parent
            radius: 14
            color: Theme.white(0.1)
        }

        AccentFill {
            anchors.fill: parent
            radius: 14
            from: root.tint
            opacity: root.disabled ? 0 : 1

            Behavior on opacity {
                NumberAnimation {
                    duration: 200
                    easing.type: Easing.InOutQuad
                }
            }
        }

        Rectangle {
            anchors.fill: parent
            visible: root.visualFocus
            radius: 14
            color: "transparent"
            border.width: 2
            border.color: Theme.primary
        }
    }
}
