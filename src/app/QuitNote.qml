import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Stowlark.App
import Stowlark.Window

/// Says that the application is going to quit.
Pane {
    id: root

    required property Quitting quitting

    padding: 10
    leftPadding: 20
    rightPadding: 20
    Accessible.role: Accessible.Notification
    Accessible.name: message.text
    Component.onCompleted: ScreenReader.speak(root)

    background: Rectangle {
        color: Theme.window

        Divider {
            width: parent.width
        }
    }

    RowLayout {
        anchors.fill: parent
        spacing: 12

        Label {
            id: message

            Layout.fillWidth: true
            text: qsTr("Stowlark quits once this has succeeded.")
            color: Theme.primary
            wrapMode: Text.Wrap
            font.pointSize: Theme.points(13)
        }

        PillButton {
            small: true
            text: qsTr("Don’t Quit")
            onClicked: root.quitting.cancel()
        }
    }
}
