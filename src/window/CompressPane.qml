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
    property Item browse
    property int currentRow: 0
    /// Where the list begins in the header.
    property real listY: 0
    /// How much there is of the frame around the rows, from 0 to 1.
    property real presence: view.files.count > 0 ? 1 : 0
    /// The rows that are removed but still to be seen.
    property var leaving: []

    function goTo(row: int) {
        currentRow = Math.max(0, Math.min(row, count - 1));
        positionViewAtIndex(currentRow, ListView.Contain);
    }

    /// Has rows leave from where they belong at this moment.
    function change(removal: var) {
        forceLayout();
        removal();
        forceLayout();
    }

    /// The list itself moves up only those rows that stay.
    function closeUp(row: Item, by: real) {
        for (const other of leaving) {
            if (other.y > row.y) {
                other.y -= by;
            }
        }
    }

    model: view.files
    spacing: 5
    clip: true
    leftMargin: 20
    rightMargin: 20
    boundsBehavior: Flickable.StopAtBounds
    currentIndex: -1 // a list gives its current item the focus
    reuseItems: true
    onCountChanged: currentRow = Math.max(0, Math.min(currentRow, count - 1))
    opacity: enabled ? 1 : 0

    Behavior on opacity {
        NumberAnimation {
            duration: 180
            easing.type: Easing.InOutQuad
        }
    }

    Behavior on presence {
        NumberAnimation {
            duration: 180
            easing.type: Easing.InOutQuad
        }
    }

    FocusFollower {
        pane: root
        home: root.browse
    }

    OutcomeFollower {
        view: root.view
        onLaidOut: root.positionViewAtEnd()
    }

    Card { // around the list; no taller than the eye can see, as 100,000 rows are too tall to be drawn
        readonly property real begin: root.headerItem.y + root.listY
        readonly property real end: root.footerItem.y + 16 * root.presence

        parent: root.contentItem
        z: -1
        visible: opacity > 0
        opacity: root.presence
        width: root.width - 40
        y: Math.max(begin, root.contentY - 50)
        height: Math.min(end, root.contentY + root.height + 50) - y
    }

    header: ColumnLayout {
        property real heightBefore: 0

        width: root.width - 40
        spacing: 14
        onHeightChanged: { // the rows stay where they are: it grows at its upper end
            if (root.contentY <= 1 - heightBefore) {
                Qt.callLater(root.positionViewAtBeginning);
            }
            heightBefore = height;
        }

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
            Component.onCompleted: root.browse = browseButton
        }

        RowLayout {
            onYChanged: root.listY = y - 16 * root.presence
            Layout.topMargin: 16 * root.presence
            Layout.leftMargin: 16
            Layout.rightMargin: 16
            Layout.bottomMargin: 5 * root.presence
            Layout.preferredHeight: implicitHeight * root.presence
            visible: root.presence > 0 || root.view.files.count > 0
            enabled: root.view.files.count > 0 // the focus goes at once
            clip: root.presence < 1
            opacity: root.presence

            SectionHeader {
                Layout.alignment: Qt.AlignBaseline
                symbol: "doc.on.doc"
                text: root.view.files.countText
                activeFocusOnTab: true
                onActiveFocusChanged: {
                    root.rowsFocused = activeFocus;
                    if (activeFocus) {
                        Qt.callLater(root.goTo, root.currentRow); // after what shows the header
                    }
                }
                Accessible.role: Accessible.List
                Keys.onUpPressed: root.goTo(root.currentRow - 1)
                Keys.onDownPressed: root.goTo(root.currentRow + 1)
                Keys.onPressed: event => {
                    if (event.key === Qt.Key_Delete || event.key === Qt.Key_Backspace) {
                        root.change(() => root.view.removeFileAt(root.currentRow));
                        root.goTo(root.currentRow);
                        event.accepted = true;
                        return;
                    }
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
                onClicked: root.change(() => root.view.clearFiles())
            }
        }

        Item { // the space below, where no list follows
            visible: root.presence === 0 && root.view.files.count === 0
        }
    }

    delegate: FileRow {
        transform: Translate { // newer versions of Qt reset x
            x: 16
        }
        width: root.width - 72
        spacing: root.spacing
        current: index === root.currentRow && root.rowsFocused
        onCurrentChanged: if (current) ScreenReader.follow(this)
        onRemove: root.change(() => root.view.removeFile(url))
        onShrunk: by => root.closeUp(this, by)
        onLeavingChanged: {
            const others = root.leaving.filter(row => row !== this);
            root.leaving = leaving ? [...others, this] : others;
        }
    }

    footer: ColumnLayout {
        width: root.width - 40
        spacing: 14

        SettingsCard {
            Layout.fillWidth: true
            Layout.topMargin: 30 * root.presence
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
        }

        Item {
            implicitHeight: 6
        }
    }
}
