import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Stowlark.Window

/// A box that takes dropped files.
Rectangle {
    id: root

    required property string symbol
    required property string title
    required property string hoverTitle
    required property string detail
    property real detailSize: 12
    property real detailSpacing: 0
    required property string browseLabel
    required property color tint
    property alias hovering: drop.containsDrag
    readonly property alias browseButton: browseButton

    signal dropped(var uriList)
    signal browse

    implicitHeight: column.implicitHeight + 48
    radius: 16
    color: hovering ? Theme.faded(tint, 0.1) : Theme.rowSurface
    border.pixelAligned: false
    border.width: Math.round(1.5 * Screen.devicePixelRatio) / Screen.devicePixelRatio
    border.color: hovering ? Theme.white(0) : Theme.laidOver(Theme.rowSurface, Theme.white(0.13))

    Behavior on color {
        ColorAnimation {
            duration: 150
            easing.type: Easing.InOutQuad
        }
    }

    Behavior on border.color {
        ColorAnimation {
            duration: 150
            easing.type: Easing.InOutQuad
        }
    }

    Edge {
        radius: root.radius
    }

    AccentFill {
        anchors.fill: parent
        radius: root.radius
        lineWidth: 2
        from: Theme.accentStart
        to: Theme.accentEnd
        visible: opacity > 0 // before, it has no picture
        opacity: root.hovering ? 1 : 0

        Behavior on opacity {
            NumberAnimation {
                duration: 150
                easing.type: Easing.InOutQuad
            }
        }
    }

    DropArea {
        id: drop

        anchors.fill: parent
        keys: ["text/uri-list"]
        onDropped: event => {
            event.accept(Qt.CopyAction); // never a move: the originals stay
            root.dropped(event.getDataAsArrayBuffer("text/uri-list"));
        }
    }

    ColumnLayout {
        id: column

        anchors.centerIn: parent
        spacing: 10

        Rectangle {
            Layout.alignment: Qt.AlignHCenter
            implicitWidth: 64
            implicitHeight: 64
            radius: 32
            color: root.hovering ? Theme.faded(root.tint, 0.2) : Theme.white(0.07)

            Behavior on color {
                ColorAnimation {
                    duration: 150
                    easing.type: Easing.InOutQuad
                }
            }

            Symbol {
                id: image

                anchors.centerIn: parent
                name: root.hovering ? "arrow.down.circle.fill" : root.symbol
                size: 28
                color: name === root.symbol ? Theme.secondary : root.tint

                Behavior on name {
                    Swap {
                        item: image
                    }
                }
            }
        }

        Label {
            id: heading

            Layout.alignment: Qt.AlignHCenter
            Layout.maximumWidth: root.width - 40
            text: root.hovering ? root.hoverTitle : root.title
            color: Theme.primary
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
            font.pointSize: Theme.points(15)
            font.weight: Font.DemiBold

            Behavior on text {
                Swap {
                    item: heading
                }
            }
        }

        Label {
            Layout.alignment: Qt.AlignHCenter
            Layout.maximumWidth: root.width - 40
            text: root.detail
            color: Theme.secondary
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
            font.pointSize: Theme.points(root.detailSize)
            font.letterSpacing: root.detailSpacing
        }

        PillButton {
            id: browseButton

            Layout.alignment: Qt.AlignHCenter
            text: root.browseLabel
            onClicked: root.browse()
        }
    }
}
