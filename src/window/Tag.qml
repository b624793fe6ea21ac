import QtQuick
import QtQuick.Controls.Basic

/// A short text on a surface of its own.
Rectangle {
    id: root

    property alias text: label.text
    property alias textColor: label.color
    property alias font: label.font
    property real horizontalPadding: 7
    property real verticalPadding: 3
    property bool isEdged: true

    implicitWidth: label.implicitWidth + 2 * horizontalPadding
    implicitHeight: label.implicitHeight + 2 * verticalPadding
    radius: 5
    color: Theme.white(0.06)

    Edge {
        visible: root.isEdged && Theme.isLight
        radius: root.radius
    }

    Label {
        id: label

        anchors.centerIn: parent
        color: Theme.secondary
        font.pointSize: Theme.points(11)
        font.weight: Font.Medium
        textFormat: Text.PlainText
    }
}
