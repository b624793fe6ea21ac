// The rows and ends of a list see the view by its id, which qmllint of Qt 6.4 cannot follow.
// qmllint disable unqualified
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Stowlark.Window

/// Collects files and makes an archive of them. One list, so that only the rows in sight exist.
ListView {
    id: root

    required property ContentView view
    /// The keyboard is with the rows: arrows go through them, Delete removes the current one.
    property bool rowsFocused: false
    property int currentRow: 0
    /// Where the list begins in the header.
    property real listY: 0

    function goTo(row: int) {
        currentRow = Math.max(0, Math.min(row, count - 1));
        positionViewAtIndex(currentRow, ListView.Contain);
    }

    model: view.files
    spacing: 5
    clip: true
    leftMargin: 20
    rightMargin: 20
    boundsBehavior: Flickable.StopAtBounds
    currentIndex: -1 // a list gives its current item the focus
    reuseItems: true

    FocusFollower {
        pane: root
    }

    Connections {
        target: root.view

        function onStatusChanged() {
            if (root.view.mgr.statusMessage !== "") {
                toEnd.restart();
            }
        }
    }

    Timer {
        id: toEnd

        interval: 20 // by then the outcome is laid out
        onTriggered: root.positionViewAtEnd()
    }

    Card { // around the list; no taller than the eye can see, as 100,000 rows are too tall to be drawn
        readonly property real begin: root.headerItem.y + root.listY
        readonly property real end: root.footerItem.y + 16

        parent: root.contentItem
        z: -1
        visible: root.count > 0
        width: root.width - 40
        y: Math.max(begin, root.contentY - 50)
        height: Math.min(end, root.contentY + root.height + 50) - y
    }

    header: ColumnLayout {
        width: root.width - 40
        spacing: 14
        onHeightChanged: Qt.callLater(root.positionViewAtBeginning)

        DropZone {
            Layout.fillWidth: true
            Layout.topMargin: 14
            symbol: "plus.rectangle.on.folder"
            title: qsTr("Drop files & folders here")
            hoverTitle: qsTr("Release to add files")
            detail: qsTr("or")
            browseLabel: qsTr("Browse Files…")
            tint: Theme.accentStart
            onHoveringChanged: root.view.isDragOver = hovering
            onDropped: uriList => root.view.dropFiles(uriList)
            onBrowse: root.view.browseFiles()
        }

        RowLayout {
            onYChanged: root.listY = y - 16
            Layout.topMargin: 16
            Layout.leftMargin: 16
            Layout.rightMargin: 16
            Layout.bottomMargin: 5
            visible: root.view.files.count > 0
            enabled: visible

            SectionHeader {
                Layout.alignment: Qt.AlignBaseline
                symbol: "doc.on.doc"
                text: root.view.files.countText
                activeFocusOnTab: true
                onActiveFocusChanged: root.rowsFocused = activeFocus
                Accessible.role: Accessible.List
                Keys.onUpPressed: root.goTo(root.currentRow - 1)
                Keys.onDownPressed: root.goTo(root.currentRow + 1)
                Keys.onDeletePressed: {
                    root.view.removeFileAt(root.currentRow);
                    root.goTo(root.currentRow);
                }
                Keys.onPressed: event => {
                    const rows = {
                        [Qt.Key_Home]: 0,
                        [Qt.Key_End]: root.count - 1,
                        [Qt.Key_PageUp]: root.currentRow - 8,
                        [Qt.Key_PageDown]: root.currentRow + 8
                    };
                    if (event.key in rows) {
                        root.goTo(rows[event.key]);
                        event.accepted = true;
                    }
                }
            }

            Label {
                Layout.fillWidth: true
                Layout.alignment: Qt.AlignBaseline
                text: root.view.files.totalSize === "" ? "" : "• " + root.view.files.totalSize
                color: Theme.secondary
                font.pointSize: Theme.points(12)
            }

            TextButton {
                Layout.alignment: Qt.AlignBaseline
                text: qsTr("Clear All")
                color: Theme.faded(Theme.danger, 0.8)
                onClicked: root.view.clearFiles()
            }
        }

        Item { // the space below, where no list follows
            visible: root.view.files.count === 0
        }
    }

    delegate: FileRow {
        x: 16
        width: root.width - 72
        current: index === root.currentRow && root.rowsFocused
        onCurrentChanged: if (current) ScreenReader.follow(this)
        onRemove: root.view.removeFile(url)
    }

    footer: ColumnLayout {
        width: root.width - 40
        spacing: 14

        SettingsCard {
            Layout.fillWidth: true
            Layout.topMargin: root.view.files.count > 0 ? 30 : 0
            view: root.view
        }

        OutputCard {
            Layout.fillWidth: true
            view: root.view
        }

        ActionButton {
            Layout.fillWidth: true
            symbol: "archivebox.fill"
            text: busy ? qsTr("Creating…") : qsTr("Create Archive")
            busy: root.view.mgr.isCreating
            disabled: root.view.createDisabled
            tint: Theme.accentStart
            onClicked: root.view.create()
        }

        StatusBanner {
            Layout.fillWidth: true
            view: root.view
            onHeightChanged: Qt.callLater(root.positionViewAtEnd)
        }

        Item {
            implicitHeight: 6
        }
    }
}
