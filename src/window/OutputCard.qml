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

    Text {
        text: qsTr("Archive Name")
        color: Theme.secondary
        font.pixelSize: 11
        font.weight: Font.Medium
    }

    RowLayout {
        TextField {
            Layout.fillWidth: true
            Accessible.name: qsTr("Archive Name")
            placeholderText: qsTr("archive")
            text: root.view.archiveName
            selectByMouse: true
            onTextEdited: root.view.archiveName = text
        }

        Text {
            text: root.view.extensionLabel
            color: Theme.primary
            font.pixelSize: 13
            font.weight: Font.Medium
        }
    }

    Text {
        text: qsTr("Save To")
        color: Theme.secondary
        font.pixelSize: 11
        font.weight: Font.Medium
    }

    FolderRow {
        Layout.fillWidth: true
        folder: root.view.outputDir
        accessibleName: qsTr("Change the folder to save to")
        onChange: root.view.chooseSaveDir()
    }
}
