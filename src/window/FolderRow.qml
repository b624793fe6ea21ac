import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts

/// A folder's path and a button to choose another.
Rectangle {
    id: root

    required property string folder
    required property string accessibleName

    signal change

    implicitHeight: row.implicitHeight + 20
    radius: 10
    color: Theme.rowSurface
    border.color: Theme.laidOver(Theme.rowSurface, Theme.rowBorder)

    Edge {
        radius: root.radius
    }

    RowLayout {
        id: row

        anchors.fill: parent
        anchors.margins: 10
        spacing: 8

        Symbol {
            name: "folder.fill"
            size: 14
            color: Theme.secondary
        }

        Label {
            Layout.fillWidth: true
            text: root.folder
            textFormat: Text.PlainText
            color: Theme.primary
            elide: Text.ElideMiddle
            maximumLineCount: 1
            font.pointSize: Theme.points(13)
        }

        PillButton {
            small: true
            text: qsTr("Change…")
            Accessible.name: root.accessibleName
            onClicked: root.change()
        }
    }
}
