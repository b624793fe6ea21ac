import QtQuick
import QtQuick.Layouts

/// One item of the list.
Rectangle {
    id: root

    required property int index
    required property url url
    required property string name
    required property string folder
    required property string size
    required property bool isFolder
    required property string icon
    required property real spacing
    property bool current: false
    /// Removed, but still to be seen: it fades and shrinks until the next row stands in its place.
    property bool leaving: false
    property real heightBefore: 0

    signal remove
    /// While it leaves: by this much, what is below has to move up.
    signal shrunk(real by)

    implicitHeight: row.implicitHeight + 16
    clip: leaving
    onHeightChanged: {
        if (leaving) {
            shrunk(heightBefore - height);
        }
        heightBefore = height;
    }
    ListView.onPooled: {
        removal.stop();
        leaving = false;
        visible = false;
    }
    ListView.onReused: {
        visible = true;
        opacity = 1;
        height = Qt.binding(() => implicitHeight);
    }
    ListView.onRemove: removal.start()
    radius: 10
    color: Theme.rowSurface
    border.width: current ? 2 : 1
    border.color: current ? Theme.accentStart : Theme.laidOver(Theme.rowSurface, Theme.rowBorder)

    Accessible.ignored: !visible || leaving // else kept for another
    Accessible.role: Accessible.ListItem
    Accessible.name: name
    Accessible.description: size === "" ? folder : folder + ", " + size
    Accessible.focused: current // the keyboard stays with the header of the list

    SequentialAnimation {
        id: removal

        PropertyAction {
            target: root
            property: "ListView.delayRemove"
            value: true
        }

        PropertyAction {
            target: root
            property: "leaving"
            value: true
        }

        ParallelAnimation {
            NumberAnimation {
                target: root
                property: "opacity"
                to: 0
                duration: 180
                easing.type: Easing.InOutQuad
            }

            NumberAnimation {
                target: root
                property: "height"
                to: -root.spacing
                duration: 180
                easing.type: Easing.InOutQuad
            }
        }

        PropertyAction {
            target: root
            property: "leaving"
            value: false
        }

        PropertyAction {
            target: root
            property: "ListView.delayRemove"
            value: false
        }
    }

    Edge {
        radius: root.radius
        visible: Theme.isLight && !root.current
    }

    RowLayout {
        id: row

        anchors.fill: parent
        anchors.margins: 8
        spacing: 10

        Rectangle {
            implicitWidth: 32
            implicitHeight: 32
            radius: 7
            color: root.isFolder ? Theme.faded(Theme.folder, 0.18) : Theme.white(0.08)

            Symbol {
                anchors.centerIn: parent
                name: root.icon
                size: 14
                color: root.isFolder ? Theme.folder : Theme.secondary
            }
        }

        ColumnLayout {
            Layout.fillWidth: true
            spacing: 1

            Text {
                Layout.fillWidth: true
                text: root.name
                textFormat: Text.PlainText
                color: Theme.primary
                elide: Text.ElideMiddle
                maximumLineCount: 1
                font.pointSize: Theme.points(13)
                font.weight: Font.Medium
            }

            Text {
                Layout.fillWidth: true
                text: root.folder
                textFormat: Text.PlainText
                color: Theme.secondary
                elide: Text.ElideMiddle
                maximumLineCount: 1
                font.pointSize: Theme.points(11)
            }
        }

        Tag {
            visible: root.size !== ""
            text: root.size
        }

        RemoveButton {
            focusPolicy: Qt.NoFocus
            Accessible.name: qsTr("Remove %1").arg(root.name)
            Accessible.ignored: root.Accessible.ignored
            onClicked: root.remove()
        }
    }
}
