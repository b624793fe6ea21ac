import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Stowlark.App
import Stowlark.Window

/// A command in a menu, with its keys.
MenuItem {
    id: root

    required property MenuCommand command

    /// It is about to be triggered by its keys.
    signal keyed

    text: command.label
    font.pointSize: Theme.points(13)
    padding: 6
    leftPadding: 10
    rightPadding: 10
    onTriggered: command.trigger()

    contentItem: RowLayout {
        spacing: 24

        Label {
            Layout.fillWidth: true
            text: root.text
            textFormat: Text.PlainText
            font: root.font
            color: root.highlighted ? "white" : Theme.primary
        }

        Label {
            text: root.command.shownKeys
            font: root.font
            color: root.highlighted ? "white" : Theme.secondary
        }
    }

    background: Rectangle {
        radius: 6
        color: root.highlighted ? Theme.accentStart : "transparent"
    }

    Shortcut {
        sequences: root.command.sequences
        onActivated: {
            root.keyed();
            root.command.trigger();
        }
    }
}
