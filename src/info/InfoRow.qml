import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Stowlark.Window

/// A symbol, and a text or what is placed in the row instead.
RowLayout {
    id: root

    required property string symbol
    property alias text: label.text

    Layout.leftMargin: 20
    Layout.rightMargin: 20
    Layout.topMargin: 11
    Layout.bottomMargin: 11
    spacing: 12

    Item {
        implicitWidth: Math.max(24, image.implicitWidth)
        implicitHeight: image.implicitHeight

        Symbol {
            id: image

            anchors.centerIn: parent
            name: root.symbol
            size: 13
            color: Theme.accentStart
        }
    }

    Label {
        id: label

        Layout.fillWidth: true
        visible: text !== ""
        textFormat: Text.PlainText
        color: Theme.primary
        font.pointSize: Theme.points(13)
    }
}
