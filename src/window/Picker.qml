// The rows of the list see the picker by its id, which qmllint of Qt 6.4 cannot follow.
// qmllint disable unqualified type
import QtQuick
import QtQuick.Controls.Basic
import Stowlark.Window

/// Chooses one of a few texts.
ComboBox {
    id: root

    property bool opening: false

    implicitHeight: Math.max(32, implicitContentHeight + 12)
    font.pointSize: Theme.points(13)
    padding: 0
    leftPadding: 12
    Keys.onPressed: event => {
        if (!popup.visible && (event.key === Qt.Key_Return || event.key === Qt.Key_Enter)) {
            opening = true;
            event.accepted = true;
        } else if (!popup.visible && event.key === Qt.Key_Down && event.modifiers & Qt.AltModifier) {
            popup.open();
            event.accepted = true;
        }
    }
    Keys.onReleased: event => { // the release of Return closes what is open
        if (opening && !event.isAutoRepeat) {
            opening = false;
            popup.open();
            event.accepted = true;
        }
    }
    Accessible.onPressAction: popup.open()
    Accessible.description: popup.visible ? textAt(highlightedIndex) : displayText
    Component.onCompleted: {
        popup.contentItem.parent.Accessible.name = Qt.binding(() => Accessible.name);
    }

    contentItem: Text {
        text: root.displayText
        font: root.font
        color: Theme.primary
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
        Accessible.ignored: true // the description says the same
    }

    popup: Popup {
        y: root.height + 4
        width: root.width
        padding: 4

        contentItem: ListView {
            implicitHeight: contentHeight
            clip: true
            boundsBehavior: Flickable.StopAtBounds
            model: root.delegateModel
            currentIndex: root.highlightedIndex
        }

        background: Rectangle {
            radius: 9
            color: Theme.window
            border.color: Theme.faded(Theme.primary, 0.2)
        }
    }

    delegate: ItemDelegate {
        id: entry

        required property int index
        required property string modelData

        width: ListView.view.width
        text: modelData
        leftPadding: 8
        topPadding: 7
        bottomPadding: 7
        font.weight: root.currentIndex === index ? Font.DemiBold : Font.Normal
        highlighted: root.highlightedIndex === index
        Accessible.focused: highlighted
        Accessible.onPressAction: clicked()
        onHighlightedChanged: if (highlighted) ScreenReader.follow(this)

        contentItem: Text {
            text: entry.text
            font: entry.font
            color: entry.highlighted ? "white" : Theme.primary
            elide: Text.ElideRight
        }

        background: Rectangle {
            radius: 6
            color: entry.highlighted ? Theme.accentStart : "transparent"
        }
    }

    background: Rectangle {
        radius: 7
        color: Theme.white(root.down ? 0.12 : 0.08)
        border.width: root.visualFocus ? 2 : 1
        border.color: root.visualFocus ? Theme.accentStart : Theme.faded(Theme.primary, 0.13)

        Edge {
            radius: parent.radius
            visible: Theme.isLight && pressed
            pressed: root.down
        }
    }
}
