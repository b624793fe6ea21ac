import QtQuick
import QtQuick.Controls.Basic
import Stowlark.App
import Stowlark.Window

/// The menus, in the window.
MenuBar {
    id: root

    required property MenuCommands commands

    padding: 2
    leftPadding: 8
    Accessible.name: qsTr("Menus")

    background: Item {}

    delegate: CommandBarItem {}

    Shortcut {
        sequence: "F10"
        onActivated: {
            root.currentIndex = 0;
            root.contentChildren[0].triggered();
        }
    }

    CommandMenu {
        title: "&Stowlark"

        CommandItem {
            command: root.commands.about
        }

        CommandSeparator {}

        CommandItem {
            command: root.commands.checkForUpdates
        }

        CommandSeparator {}

        CommandItem {
            command: root.commands.quit
        }
    }

    CommandMenu {
        title: qsTr("&Help")

        CommandItem {
            command: root.commands.help
        }

        CommandSeparator {}

        CommandItem {
            command: root.commands.visit
        }
    }
}
