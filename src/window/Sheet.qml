import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Templates as T

/// Something laid over the middle of the window, which takes no input until it is closed; Escape closes it too.
Popup {
    id: root

    required property string title
    /// Whether it is to be seen; it is closed by setting this to false.
    required property bool shown

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

    T.Overlay.modal: Rectangle {
        color: Qt.rgba(0, 0, 0, 0.35)
    }

    background: Item {
        SoftShadow {
            y: 6
            width: parent.width
            height: parent.height
            radius: 12
            blur: 14
            color: Qt.rgba(0, 0, 0, 0.5)
        }

        Rectangle {
            anchors.fill: parent
            radius: 12
            color: Theme.window
            border.color: Theme.faded(Theme.primary, 0.15)
        }
    }

    contentItem: FocusScope {
        focus: true
        Accessible.role: Accessible.Dialog
        Accessible.name: root.title
    }
}
