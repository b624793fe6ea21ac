import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Templates as T

/// Something laid over the middle of the window, which takes no input until it is closed; Escape closes it too.
Popup {
    id: root

    required property string title
    /// Whether it is to be seen; it is closed by setting this to false.
    required property bool shown
    property real radius: 12

    signal dismissed

    parent: T.Overlay.overlay
    x: Math.round((parent.width - width) / 2)
    y: Math.round((parent.height - height) / 2)
    modal: true
    focus: true
    padding: 0
    visible: shown
    closePolicy: Popup.CloseOnEscape
    onClosed: dismissed()
    Component.onCompleted: contentItem.parent.Accessible.name = Qt.binding(() => title) // the dialog

    T.Overlay.modal: Rectangle {
        color: Qt.rgba(0, 0, 0, 0.35)
    }

    background: Item {
        SoftShadow {
            y: 6
            width: parent.width
            height: parent.height
            radius: root.radius
            blur: 14
            color: Qt.rgba(0, 0, 0, 0.5)
        }

        Rectangle {
            anchors.fill: parent
            radius: root.radius
            color: Theme.window
        }
    }

    contentItem: FocusScope {
        focus: true

        Rectangle { // the outline, over what the sheet holds
            z: 1
            anchors.fill: parent
            radius: root.radius
            color: "transparent"
            border.color: Theme.faded(Theme.primary, 0.15)
        }
    }
}
