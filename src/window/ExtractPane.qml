import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Stowlark.Window

/// Selects an archive and unpacks it.
Flickable {
    id: root

    required property ContentView view
    property bool isComplete: false

    contentWidth: width
    contentHeight: column.implicitHeight + 34
    clip: true
    boundsBehavior: Flickable.StopAtBounds
    opacity: enabled && isComplete ? 1 : 0 // fades in also as it is made
    Component.onCompleted: isComplete = true

    Behavior on opacity {
        NumberAnimation {
            duration: 180
            easing.type: Easing.InOutQuad
        }
    }

    FocusFollower {
        pane: root
        home: zone.browseButton
    }

    OutcomeFollower {
        view: root.view
        onLaidOut: root.contentY = Math.max(0, root.contentHeight - root.height)
    }

    ColumnLayout {
        id: column

        x: 20
        y: 14
        width: root.width - 40
        spacing: 14

        DropZone {
            id: zone

            Layout.fillWidth: true
            symbol: "doc.badge.arrow.up"
            title: qsTr("Drop an archive here")
            hoverTitle: qsTr("Release to select archive")
            detail: qsTr("ZIP  •  TAR.GZ  •  7Z  •  RAR  •  DMG")
            detailSize: 11
            detailSpacing: 1
            browseLabel: qsTr("Browse Archive…")
            tint: Theme.accentEnd
            onHoveringChanged: root.view.isExtractDragOver = hovering
            onDropped: uriList => root.view.dropArchives(uriList)
            onBrowse: root.view.browseArchive()
        }

        ArchiveCard {
            Layout.fillWidth: true
            view: root.view
        }

        Card {
            Layout.fillWidth: true

            SectionHeader {
                symbol: "folder.badge.plus"
                text: qsTr("Extract To")
            }

            FolderRow {
                Layout.fillWidth: true
                folder: root.view.extractDir
                accessibleName: qsTr("Change the folder to extract to")
                onChange: root.view.chooseExtractDir()
            }

            Label {
                Layout.fillWidth: true
                text: qsTr("A folder named after the archive will be created here.")
                wrapMode: Text.Wrap
                color: Theme.secondary
                font.pointSize: Theme.points(11)
            }
        }

        ActionButton {
            Layout.fillWidth: true
            symbol: "arrow.up.doc.fill"
            text: busy ? qsTr("Extracting…") : qsTr("Extract Archive")
            busy: root.view.mgr.isCreating
            disabled: root.view.extractDisabled
            tint: Theme.accentEnd
            onClicked: root.view.extract()
        }

        StatusBanner {
            Layout.fillWidth: true
            view: root.view
        }
    }
}
