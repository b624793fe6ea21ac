// The menus and sheets see the scene by its id, which qmllint of Qt 6.4 cannot follow.
// qmllint disable unqualified
import QtQuick
import QtQuick.Controls.Basic
import Stowlark.App
import Stowlark.Window

/// The main window with what belongs to the application: menus, and what quitting waits for.
MainWindow {
    id: root

    required property AppState appState
    required property MenuCommands commands
    required property Quitting quitting

    onClosing: close => close.accepted = quitting.request()

    menuBar: Loader {
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
}
