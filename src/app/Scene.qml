// The menus and sheets see the scene by its id, which qmllint of Qt 6.4 cannot follow.
// qmllint disable unqualified
import QtQuick
import Stowlark.App
import Stowlark.Info
import Stowlark.Window

/// The main window with what belongs to the application: menus, and what quitting waits for.
MainWindow {
    id: root

    required property AppState appState
    required property MenuCommands commands
    required property Quitting quitting

    onClosing: close => close.accepted = quitting.request()

    menuBar: Loader {
        id: menus

        active: Qt.platform.os !== "osx" // which has its own at the top of the screen

        sourceComponent: CommandBar {
            commands: root.commands
        }
    }

    footer: Loader {
        active: root.quitting.isPending

        sourceComponent: QuitNote {
            quitting: root.quitting
        }
    }

    MouseArea { // a press that closes a menu does nothing else
        readonly property bool isOpen: menus.item?.isOpen ?? false

        anchors.fill: parent
        z: 1
        visible: isOpen || closing.running
        onIsOpenChanged: if (!isOpen) closing.restart()

        Timer {
            id: closing

            interval: 1
        }
    }

    Loader {
        active: root.appState.showHelp

        sourceComponent: HelpView {
            view: root.view
            shown: true
            onDismissed: root.appState.showHelp = false
        }
    }

    Loader {
        active: root.appState.showAbout

        sourceComponent: AboutView {
            view: root.view
            shown: true
            onDismissed: root.appState.showAbout = false
        }
    }
}
