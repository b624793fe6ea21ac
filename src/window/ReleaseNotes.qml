import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Stowlark.Window

/// What is new in the release that is there.
Sheet {
    id: root

    required property ContentView view
    readonly property UpdateChecker updater: view.updater

    title: heading.text
    width: Math.min(parent.width - 20, Math.max(420, footer.implicitWidth + 32)) // more where texts are enlarged
    height: 300
    shown: view.showReleaseNotes
    onDismissed: view.showReleaseNotes = false
    onOpened: notes.forceActiveFocus(Qt.PopupFocusReason)

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        RowLayout {
            Layout.margins: 16
            Layout.bottomMargin: 12
            spacing: 10

            ColumnLayout {
                spacing: 2

                Label {
                    id: heading

                    Layout.fillWidth: true
                    text: qsTr("Stowlark %1").arg(root.updater.release.version)
                    textFormat: Text.PlainText
                    color: Theme.primary
                    elide: Text.ElideRight
                    maximumLineCount: 1
                    font.pointSize: Theme.points(18)
                    font.weight: Font.Bold
                }

                Label {
                    Layout.fillWidth: true
                    visible: text !== ""
                    text: root.updater.release.releaseDate
                    textFormat: Text.PlainText
                    color: Theme.secondary
                    elide: Text.ElideRight
                    maximumLineCount: 1
                    font.pointSize: Theme.points(12)
                }
            }

            SymbolButton {
                symbol: "xmark.circle.fill"
                size: 22
                color: Theme.secondary
                Accessible.name: qsTr("Close")
                onClicked: root.dismissed()
            }
        }

        Divider {
            Layout.fillWidth: true
        }

        ScrollView {
            id: scroll

            Layout.fillWidth: true
            Layout.fillHeight: true
            palette.mid: Theme.faded(Theme.primary, 0.5) // of its bars
            ScrollBar.horizontal.policy: ScrollBar.AlwaysOff
            ScrollBar.vertical.policy: contentHeight > height ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff

            TextArea {
                id: notes

                padding: 20
                leftPadding: 20
                text: root.shown ? root.updater.release.releaseNotes : ""
                textFormat: TextEdit.PlainText
                readOnly: true
                selectByMouse: true
                selectByKeyboard: true
                wrapMode: TextEdit.Wrap
                color: Theme.primary
                font.pointSize: Theme.points(14)
                Accessible.name: qsTr("Release notes")
                KeyNavigation.priority: KeyNavigation.BeforeItem
                KeyNavigation.tab: later
            }
        }

        Divider {
            Layout.fillWidth: true
        }

        RowLayout {
            id: footer

            Layout.margins: 12
            Layout.leftMargin: 16
            Layout.rightMargin: 16
            spacing: 10

            Label {
                Layout.fillWidth: true
                text: qsTr("Current: %1").arg(root.updater.currentVersion)
                textFormat: Text.PlainText
                elide: Text.ElideRight
                color: Theme.secondary
                font.pointSize: Theme.points(12)
            }

            PillButton {
                id: later

                small: true
                text: qsTr("Later")
                onClicked: root.dismissed()
            }

            DownloadButton {
                Layout.fillWidth: true
                Layout.maximumWidth: implicitWidth
                text: qsTr("Download Update")
                textSize: 13
                horizontalPadding: 16
                verticalPadding: 8
                radius: 9
                shadow: 6
                onClicked: {
                    root.updater.openDownload();
                    root.dismissed();
                }
            }
        }
    }
}
