import QtQuick
import QtQuick.Layouts
import Stowlark.Window

/// The name of the maker's site, which opens it; cut off rather than wider than what it stands in. Not a
/// button, as Qt Quick 6.4 tells screen readers of every button that it is one, whatever its role.
Text {
    id: root

    required property ContentView view

    Layout.fillWidth: true
    Layout.preferredWidth: Math.min(Math.ceil(implicitWidth), 200)
    Layout.maximumWidth: Math.ceil(implicitWidth)
    text: view.siteName
    textFormat: Text.PlainText
    elide: Text.ElideRight
    color: Theme.accentStart
    opacity: mouse.pressed ? 0.6 : 1
    activeFocusOnTab: true
    Keys.onSpacePressed: view.openSite()
    Keys.onReturnPressed: view.openSite()
    Keys.onEnterPressed: view.openSite()
    Accessible.role: Accessible.Link
    Accessible.name: text
    Accessible.focusable: true
    Accessible.onPressAction: view.openSite()

    MouseArea {
        id: mouse

        anchors.fill: parent
        onClicked: root.view.openSite()
    }

    Rectangle {
        anchors.fill: parent
        anchors.margins: -2
        anchors.leftMargin: -4
        anchors.rightMargin: -4
        visible: root.activeFocus
        radius: 5
        color: "transparent"
        border.width: 2
        border.color: Theme.accentStart
    }
}
