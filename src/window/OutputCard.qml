import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Stowlark.Window

/// The archive's name and folder.
Card {
    id: root

    required property ContentView view

    SectionHeader {
        symbol: "square.and.arrow.down.fill"
        text: qsTr("Output")
    }

    Label {
        text: qsTr("Archive Name")
        color: Theme.secondary
        font.pointSize: Theme.points(11)
        font.weight: Font.Medium
    }

    RowLayout {
        spacing: 8

        TextField {
            Layout.fillWidth: true
            implicitHeight: Math.max(30, contentHeight + 12)
            padding: 6
            leftPadding: 10
            font.pointSize: Theme.points(13)
            Accessible.name: qsTr("Archive Name")
            placeholderText: qsTr("archive")
            text: root.view.archiveName
            selectByMouse: true
            onTextEdited: root.view.archiveName = text

            background: Rectangle {
                radius: 6
                color: Theme.system.base
                border.width: parent.activeFocus ? 2 : 1
                border.color: parent.activeFocus ? Theme.accentStart : Theme.faded(Theme.primary, 0.13)
            }
        }

        Tag {
            text: root.view.extensionLabel
            textColor: Theme.primary
            font.pointSize: Theme.points(13)
            horizontalPadding: 10
            verticalPadding: 6
            radius: 7
            color: Theme.white(0.08)
        }
    }

    Label {
        text: qsTr("Save To")
        color: Theme.secondary
        font.pointSize: Theme.points(11)
        font.weight: Font.Medium
    }

    FolderRow {
        Layout.fillWidth: true
        folder: root.view.outputDir
        accessibleName: qsTr("Change the folder to save to")
        onChange: root.view.chooseSaveDir()
    }
}
