import QtQuick
import QtQuick.Controls.Basic

ApplicationWindow {
    width: 580
    height: 720
    visible: true

    Button {
        anchors.centerIn: parent
        text: "Button"
    }
}
