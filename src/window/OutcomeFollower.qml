import QtQuick
import Stowlark.Window

/// Tells a pane when to scroll to the outcome of an operation: once, as soon as it is laid out.
Item {
    id: root

    required property ContentView view

    signal laidOut

    Connections {
        target: root.view

        function onStatusChanged() {
            if (root.view.mgr.statusMessage !== "") {
                layouting.restart();
            }
        }
    }

    Timer {
        id: layouting

        interval: 20
        onTriggered: root.laidOut()
    }
}
