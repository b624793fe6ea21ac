import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Stowlark.Window

/// Says that a newer release is there, and carries its notes.
Rectangle {
    id: root

    required property ContentView view
    readonly property UpdateChecker updater: view.updater
    readonly property string title: qsTr("Stowlark %1 is available").arg(updater.release.version)

    implicitHeight: row.implicitHeight + 20
    radius: 10
    color: Theme.faded(Theme.success, 0.08)
    Accessible.role: Accessible.AlertMessage
    Accessible.name: title

    ReleaseNotes {
        view: root.view
    }

    RowLayout {
        id: row

        anchors.fill: parent
        anchors.leftMargin: 14
        anchors.rightMargin: 10
        spacing: 10

        Item {
            implicitWidth: 8
            implicitHeight: 8

            SoftShadow {
                anchors.fill: parent
                radius: 4
                blur: 4
                color: Theme.faded(Theme.success, 0.6)
            }

            Rectangle {
                anchors.fill: parent
                radius: 4
                color: Theme.success
            }
        }

        ColumnLayout {
            Layout.fillWidth: true
            spacing: 1

            Label {
                Layout.fillWidth: true
                text: root.title
                textFormat: Text.PlainText
                color: Theme.primary
                elide: Text.ElideRight
                wrapMode: Text.Wrap
                maximumLineCount: 2
                font.pointSize: Theme.points(12)
                font.weight: Font.DemiBold
            }

            Label {
                Layout.fillWidth: true
                visible: text !== ""
                text: root.view.releaseHeadline
                textFormat: Text.PlainText
                color: Theme.secondary
                elide: Text.ElideRight
                maximumLineCount: 1
                font.pointSize: Theme.points(11)
            }
        }

        GridLayout {
            columns: root.width < news.implicitWidth + download.implicitWidth + 230 ? 1 : 2
            columnSpacing: 10
            rowSpacing: 6

            PillButton {
                id: news

                Layout.alignment: Qt.AlignRight
                small: true
                text: qsTr("What's New")
                onClicked: root.view.showReleaseNotes = true
            }

            DownloadButton {
                id: download

                text: qsTr("Download")
                textSize: 12
                horizontalPadding: 12
                verticalPadding: 5
                radius: height / 2
                onClicked: root.updater.openDownload()
            }
        }

        RemoveButton {
            diameter: 18
            symbolSize: 9
            Accessible.name: qsTr("Dismiss")
            onClicked: root.updater.clearAvailable()
        }
    }
}
