import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Stowlark.Window

/// What the program is, its version and its maker.
Sheet {
    id: root

    required property ContentView view
    readonly property string version: view.updater.currentVersion

    title: qsTr("About Stowlark")
    radius: 14
    // Wider where the desktop enlarges texts.
    width: Math.max(340, Math.min(Math.ceil(column.implicitWidth), parent.width - 40))
    height: Math.ceil(column.implicitHeight)

    ColumnLayout {
        id: column

        anchors.fill: parent
        spacing: 0

        AccentFill {
            Layout.fillWidth: true
            implicitHeight: name.implicitHeight + 64
            from: Theme.accentStart
            to: Theme.accentEnd
            radius: root.radius
            isBanner: true

            ColumnLayout {
                id: name

                anchors.centerIn: parent
                spacing: 10

                AppIcon {
                    Layout.alignment: Qt.AlignHCenter
                    size: 80
                }

                Text {
                    Layout.alignment: Qt.AlignHCenter
                    text: qsTr("Stowlark")
                    textFormat: Text.PlainText
                    color: "white"
                    font.pointSize: Theme.points(22)
                    font.weight: Font.Bold
                    Accessible.role: Accessible.Heading
                    Accessible.name: text
                }

                Label {
                    Layout.alignment: Qt.AlignHCenter
                    text: qsTr("Version %1").arg(root.version)
                    textFormat: Text.PlainText
                    color: Theme.white(0.7)
                    font.pointSize: Theme.points(13)
                }
            }
        }

        Divider {
            Layout.fillWidth: true
        }

        ColumnLayout {
            Layout.topMargin: 6
            Layout.bottomMargin: 6
            spacing: 0

            InfoRow {
                symbol: "archivebox.fill"
                text: "ZIP · TAR.GZ · 7-Zip · RAR · DMG"
            }

            Divider {
                Layout.fillWidth: true
                Layout.leftMargin: 44
            }

            InfoRow {
                symbol: "arrow.up.arrow.down"
                text: "Compress & extract archives"
            }

            Divider {
                Layout.fillWidth: true
                Layout.leftMargin: 44
            }

            InfoRow {
                symbol: "cursorarrow.rays"
                text: "Right-click any archive in Finder"
            }

            Divider {
                Layout.fillWidth: true
                Layout.leftMargin: 44
            }

            InfoRow {
                symbol: "globe"

                SiteLink {
                    view: root.view
                    font.pointSize: Theme.points(13)
                    font.weight: Font.Normal
                }
            }
        }

        Divider {
            Layout.fillWidth: true
        }

        RowLayout {
            Layout.leftMargin: 20
            Layout.rightMargin: 20
            Layout.topMargin: 14
            Layout.bottomMargin: 14
            spacing: 12

            Label {
                Layout.fillWidth: true
                text: qsTr("© 2026 The Stowlark developers")
                textFormat: Text.PlainText
                wrapMode: Text.Wrap
                color: Theme.secondary
                font.pointSize: Theme.points(11)
            }

            BorderedButton {
                text: qsTr("Close")
                focus: true
                onClicked: root.dismissed()
            }
        }
    }
}
