import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Stowlark.Window

/// Selects an archive and unpacks it.
Flickable {
    id: root

    required property ContentView view

    contentWidth: width
    contentHeight: column.implicitHeight + 34
    clip: true
    boundsBehavior: Flickable.StopAtBounds

    /// The status line stands at the end.
    onContentHeightChanged: {
        if (view.mgr.statusMessage !== "") {
            contentY = Math.max(0, contentHeight - height);
        }
    }

    FocusFollower {
        pane: root
    }

    ColumnLayout {
        id: column

        x: 20
        y: 14
        width: root.width - 40
        spacing: 14

        DropZone {
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

        Card {
            Layout.fillWidth: true
            visible: root.view.hasArchive
            enabled: visible

            RowLayout {
                spacing: 10

                AccentFill {
                    implicitWidth: 44
                    implicitHeight: 44
                    radius: 10
                    from: Theme.accentStart
                    to: Theme.accentEnd

                    Symbol {
                        anchors.centerIn: parent
                        name: root.view.archiveIcon
                        size: 20
                        color: "white"
                    }
                }

                ColumnLayout {
                    Layout.fillWidth: true

                    Label {
                        Layout.fillWidth: true
                        text: root.view.archiveFileName
                        textFormat: Text.PlainText
                        color: Theme.primary
                        elide: Text.ElideMiddle
                        maximumLineCount: 1
                        font.pointSize: Theme.points(14)
                        font.weight: Font.DemiBold
                    }

                    Label {
                        Layout.fillWidth: true
                        text: root.view.archiveFileFolder
                        textFormat: Text.PlainText
                        color: Theme.secondary
                        elide: Text.ElideMiddle
                        maximumLineCount: 1
                        font.pointSize: Theme.points(11)
                    }
                }

                Label {
                    text: root.view.archiveFileSize
                    color: Theme.secondary
                    font.pointSize: Theme.points(11)
                    font.weight: Font.Medium
                }

                RemoveButton {
                    Accessible.name: qsTr("Remove %1").arg(root.view.archiveFileName)
                    onClicked: root.view.removeArchive()
                }
            }
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
