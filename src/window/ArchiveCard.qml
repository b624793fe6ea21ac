import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Stowlark.Window

/// The selected archive. Without one it fades and shrinks, with what it showed last.
Card {
    id: root

    required property ContentView view
    property real presence: view.hasArchive ? 1 : 0
    property string name
    property string folder
    property string size
    property string icon: "doc.fill"

    Layout.preferredHeight: implicitHeight * presence
    Layout.bottomMargin: -14 * (1 - presence) // the space that follows
    visible: presence > 0 || view.hasArchive
    enabled: view.hasArchive // the focus goes at once
    clip: presence < 1
    opacity: presence

    Behavior on presence {
        NumberAnimation {
            duration: 180
            easing.type: Easing.InOutQuad
        }
    }

    Binding {
        root.name: root.view.archiveFileName
        root.folder: root.view.archiveFileFolder
        root.size: root.view.archiveFileSize
        root.icon: root.view.archiveIcon
        when: root.view.hasArchive
        restoreMode: Binding.RestoreNone
    }

    RowLayout {
        spacing: 10

        AccentFill {
            implicitWidth: 44
            implicitHeight: 44
            radius: 10
            from: Theme.accentStart
            to: Theme.accentEnd

            Symbol {
                anchors.centerIn: parent
                name: root.icon
                size: 20
                color: "white"
            }
        }

        ColumnLayout {
            Layout.fillWidth: true

            Label {
                Layout.fillWidth: true
                text: root.name
                textFormat: Text.PlainText
                color: Theme.primary
                elide: Text.ElideMiddle
                maximumLineCount: 1
                font.pointSize: Theme.points(14)
                font.weight: Font.DemiBold
            }

            Label {
                Layout.fillWidth: true
                text: root.folder
                textFormat: Text.PlainText
                color: Theme.secondary
                elide: Text.ElideMiddle
                maximumLineCount: 1
                font.pointSize: Theme.points(11)
            }
        }

        Label {
            text: root.size
            color: Theme.secondary
            font.pointSize: Theme.points(11)
            font.weight: Font.Medium
        }

        RemoveButton {
            Accessible.name: qsTr("Remove %1").arg(root.name)
            onClicked: root.view.removeArchive()
        }
    }
}
