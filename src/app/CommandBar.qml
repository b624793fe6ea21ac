import QtQuick
import QtQuick.Controls.Basic
import Stowlark.App

/// The menus, in the window.
MenuBar {
    id: root

    required property MenuCommands commands
    readonly property bool isOpen: application.visible || help.visible

    function dismiss() {
        application.dismiss();
        help.dismiss();
    }

    topPadding: 2 // newer versions of Qt bind these to the safe area, each by itself
    bottomPadding: 2
    leftPadding: 8
    Accessible.name: qsTr("Menus")

    background: Item {}

    delegate: CommandBarItem {}

    Shortcut {
        sequence: "F10"
        onActivated: {
            root.currentIndex = 0;
            root.contentChildren[0].triggered();
            application.currentIndex = 0;
        }
    }

    CommandMenu {
        id: application

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
            onKeyed: root.dismiss()
        }
    }

    CommandMenu {
        id: help

        title: qsTr("&Help")

        CommandItem {
            command: root.commands.help
            onKeyed: root.dismiss()
        }

        CommandSeparator {}

        CommandItem {
            command: root.commands.visit
        }
    }
}
