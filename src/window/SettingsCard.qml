import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Stowlark.Window

/// Format and level.
Card {
    id: root

    required property ContentView view

    SectionHeader {
        symbol: "gearshape.fill"
        text: qsTr("Settings")
    }

    ColumnLayout {
        spacing: 6

        Label {
            text: qsTr("Format")
            color: Theme.secondary
            font.pointSize: Theme.points(11)
            font.weight: Font.Medium
        }

        Picker {
            Layout.fillWidth: true
            Accessible.name: qsTr("Format")
            model: root.view.formats
            currentIndex: root.view.format
            onActivated: index => root.view.format = index
        }

        RowLayout {
            visible: root.view.toolWarning !== ""
            spacing: 5

            Symbol {
                Layout.alignment: Qt.AlignBaseline
                name: "exclamationmark.triangle.fill"
                size: 11
                color: Theme.warning
            }

            Label {
                Layout.fillWidth: true
                Layout.alignment: Qt.AlignBaseline
                text: root.view.toolWarning
                textFormat: Text.PlainText
                wrapMode: Text.Wrap
                color: Theme.warning
                font.pointSize: Theme.points(11)
            }
        }
    }

    ColumnLayout {
        spacing: 6

        Label {
            text: qsTr("Compression")
            color: Theme.secondary
            font.pointSize: Theme.points(11)
            font.weight: Font.Medium
        }

        Picker {
            Layout.fillWidth: true
            Accessible.name: qsTr("Compression")
            model: root.view.levels
            currentIndex: root.view.level
            onActivated: index => root.view.level = index
        }
    }
}
