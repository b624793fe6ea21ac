import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Stowlark.Window

/// The large button at the foot of a pane; it cannot be pressed while disabled or busy.
Button {
    id: root

    required property string symbol
    required property bool busy
    required property bool disabled
    required property color tint
    /// White does not show on the disabled surface of a light desktop.
    readonly property color labelColor: disabled && Theme.isLight ? Theme.faded(Theme.primary, 0.4) : "white"

    implicitHeight: Math.max(52, implicitContentHeight + 20)
    enabled: !disabled && !busy
    opacity: down ? 0.85 : 1
    font.pointSize: Theme.points(15)
    font.weight: Font.DemiBold
    Accessible.description: enabled ? "" : qsTr("Not available now") // it has no state for that
    Keys.onReturnPressed: root.clicked()
    Keys.onEnterPressed: root.clicked()
    Accessible.onPressAction: if (enabled) root.clicked()

    contentItem: RowLayout {
        spacing: 9

        Item {
            Layout.fillWidth: true
        }

        Loader {
            active: root.busy
            visible: active
            source: "Spinner.qml"
        }

        Symbol {
            visible: !root.busy
            name: root.symbol
            size: 15
            color: root.labelColor
        }

        Text {
            Layout.maximumWidth: root.width - 70
            text: root.text
            font: root.font
            color: root.labelColor
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
        }

        Item {
            Layout.fillWidth: true
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

            Edge {
                radius: parent.radius
                visible: Theme.isLight && root.disabled
            }
        }

        AccentFill {
            anchors.fill: parent
            radius: 14
            from: root.tint
            to: Theme.accentEnd
            visible: opacity > 0
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
