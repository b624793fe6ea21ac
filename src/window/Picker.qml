// The rows of the list see the picker by its id, which qmllint of Qt 6.4 cannot follow.
// qmllint disable unqualified
import QtQuick
import QtQuick.Controls.Basic
import Stowlark.Window

/// Chooses one of a few texts.
ComboBox {
    id: root

    implicitHeight: Math.max(32, implicitContentHeight + 12)
    font.pointSize: Theme.points(13)
    leftPadding: 0 // the text has its own
    Accessible.onPressAction: popup.open()
    Accessible.description: popup.visible ? textAt(highlightedIndex) : displayText
    Component.onCompleted: {
        contentItem.Accessible.ignored = true; // the description says the same
        popup.contentItem.parent.Accessible.name = Qt.binding(() => Accessible.name);
    }

    delegate: ItemDelegate {
        required property int index
        required property string modelData

        width: ListView.view.width
        text: modelData
        font.weight: root.currentIndex === index ? Font.DemiBold : Font.Normal
        highlighted: root.highlightedIndex === index
        Accessible.focused: highlighted
        Accessible.onPressAction: clicked()
        onHighlightedChanged: if (highlighted) ScreenReader.follow(this)
    }

    background: Rectangle {
        radius: 7
        color: Theme.white(root.down ? 0.12 : 0.08)
        border.width: root.visualFocus ? 2 : 1
        border.color: root.visualFocus ? Theme.accentStart : Theme.faded(Theme.primary, 0.13)
    }
}
