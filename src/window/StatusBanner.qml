// The lines of a list see the banner by its id, which qmllint of Qt 6.4 cannot follow.
// qmllint disable unqualified
import QtQuick
import QtQuick.Layouts
import Stowlark.Window

/// How the last operation went.
Rectangle {
    id: root

    required property ContentView view
    readonly property ArchiveManager mgr: view.mgr
    /// Too long to show at once: then only the lines in sight are laid out, the last ones at first.
    readonly property bool isLong: view.statusText === ""
    readonly property color textColor: mgr.statusIsError ? Theme.warning : Theme.primary
    readonly property color tint: mgr.statusIsError ? Theme.warning : Theme.success

    visible: Accessible.name !== "" // then only is there something to read as it appears
    enabled: visible
    implicitHeight: row.implicitHeight + 24
    radius: 12
    color: Theme.faded(tint, 0.1)
    border.color: Theme.laidOver(color, Theme.faded(tint, 0.3))
    Accessible.role: Accessible.Notification
    Accessible.name: view.statusSummary
    Accessible.onNameChanged: ScreenReader.speak(root)

    RowLayout {
        id: row

        anchors.fill: parent
        anchors.margins: 12
        spacing: 8

        Symbol {
            name: root.mgr.statusIsError ? "exclamationmark.triangle.fill" : "checkmark.circle.fill"
            size: 15
            color: root.tint
        }

        Text {
            Layout.fillWidth: true
            visible: !root.isLong
            text: root.view.statusText
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            color: root.textColor
            font.pointSize: Theme.points(13)
        }

        ListView {
            id: lines

            Layout.fillWidth: true
            implicitHeight: 180
            visible: root.isLong
            enabled: visible
            clip: true
            activeFocusOnTab: true
            keyNavigationEnabled: false
            highlightFollowsCurrentItem: false
            onCurrentIndexChanged: currentIndex = -1 // a list gives its current item the focus
            boundsBehavior: Flickable.StopAtBounds
            model: root.view.statusLines
            onHeightChanged: lines.positionViewAtEnd()
            onModelChanged: lines.positionViewAtEnd()
            Accessible.role: Accessible.List
            Accessible.name: qsTr("Message")
            Keys.onUpPressed: lines.scroll(-40)
            Keys.onDownPressed: lines.scroll(40)
            Keys.onPressed: event => {
                event.accepted = true;
                switch (event.key) {
                case Qt.Key_PageUp:
                    return lines.scroll(20 - lines.height);
                case Qt.Key_PageDown:
                    return lines.scroll(lines.height - 20);
                case Qt.Key_Home:
                    return lines.positionViewAtBeginning();
                case Qt.Key_End:
                    return lines.positionViewAtEnd();
                }
                event.accepted = false;
            }

            function scroll(by: real) {
                contentY += by;
                returnToBounds();
            }

            Rectangle {
                parent: lines // not to move with the lines
                anchors.fill: parent
                visible: lines.activeFocus
                radius: 5
                color: "transparent"
                border.width: 2
                border.color: Theme.accentStart
            }

            delegate: Text {
                required property string modelData

                width: ListView.view.width
                text: modelData
                textFormat: Text.PlainText
                wrapMode: Text.Wrap
                color: root.textColor
                font.pointSize: Theme.points(13)
            }
        }

        TextButton {
            visible: root.mgr.statusIsError
            text: qsTr("Copy")
            Accessible.name: qsTr("Copy the message")
            onClicked: root.view.copyStatus()
        }

        TextButton {
            visible: root.view.hasOutput
            text: qsTr("Show in Finder")
            onClicked: root.view.showInFinder()
        }
    }
}
