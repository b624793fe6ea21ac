// The rows see the sheet by its id, which qmllint of Qt 6.4 cannot follow.
// qmllint disable unqualified
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Stowlark.Window

/// How to use the program, and what it can open.
Sheet {
    id: root

    required property ContentView view
    readonly property var shortcuts: [ //
        ["Drop files", "Drag files/folders onto the drop zone"], //
        ["Browse", "Click Browse to pick files"], //
        ["Create", "Choose format → name → Save To → Create"], //
        ["Extract", "Switch to Extract tab, drop any archive"], //
        ["Right-click", "Finder: right-click archive → Extract with Stowlark"], //
        ["Check updates", "Stowlark menu → Check for Updates…"]]
    readonly property var formats: ["ZIP", "TAR.GZ", "7Z", "RAR", "DMG"]
    readonly property var keyWidths: shortcuts.map(pair => Math.ceil(metrics.advanceWidth(pair[0])))
    readonly property real keyWidth: Math.max(100, ...keyWidths)

    title: heading.text
    width: Math.max(400, Math.ceil(column.implicitWidth)) // more where the desktop enlarges texts
    height: 360
    onAboutToShow: pane.contentY = 0

    FontMetrics {
        id: metrics

        font.pointSize: Theme.points(12)
        font.weight: Font.DemiBold
    }

    ColumnLayout {
        id: column

        anchors.fill: parent
        spacing: 0
        focus: true
        Keys.onPressed: event => {
            const places = {
                [Qt.Key_Up]: pane.contentY - 30,
                [Qt.Key_Down]: pane.contentY + 30,
                [Qt.Key_PageUp]: pane.contentY - pane.height + 30,
                [Qt.Key_PageDown]: pane.contentY + pane.height - 30,
                [Qt.Key_Home]: 0,
                [Qt.Key_End]: pane.contentHeight
            };
            if (event.key in places) {
                pane.contentY = Math.max(0, Math.min(places[event.key], pane.contentHeight - pane.height));
                event.accepted = true;
            }
        }

        RowLayout {
            Layout.margins: 20
            Layout.fillHeight: false
            spacing: 10

            SectionHeader {
                id: heading

                symbol: "questionmark.circle.fill"
                symbolSize: 16
                text: qsTr("Stowlark Help")
                textColor: Theme.accentStart
                font.pointSize: Theme.points(16)
            }

            Item {
                Layout.fillWidth: true
            }

            SymbolButton {
                symbol: "xmark.circle.fill"
                size: 20
                color: Theme.secondary
                padding: 0
                leftInset: -2
                rightInset: -2
                topInset: -2
                bottomInset: -2
                Accessible.name: qsTr("Close")
                onClicked: root.dismissed()
            }
        }

        Divider {
            Layout.fillWidth: true
        }

        Flickable {
            id: pane

            Layout.fillWidth: true
            Layout.fillHeight: true
            implicitWidth: hints.implicitWidth
            contentHeight: hints.implicitHeight
            clip: true
            boundsBehavior: Flickable.StopAtBounds

            ScrollBar.vertical: ScrollBar {
                id: bar

                policy: size < 1 ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff
                Accessible.ignored: true // readers scroll by themselves

                contentItem: Rectangle {
                    implicitWidth: 6
                    radius: 3
                    color: Theme.faded(Theme.primary, bar.pressed ? 0.5 : bar.hovered ? 0.4 : 0.28)
                }
            }

            ColumnLayout {
                id: hints

                width: pane.width
                spacing: 6

                Heading {
                    Layout.topMargin: 14
                    text: qsTr("How to use")
                }

                Repeater {
                    model: root.shortcuts

                    HelpRow {
                        required property var modelData

                        Layout.leftMargin: 20
                        Layout.rightMargin: 20
                        Layout.topMargin: 4
                        Layout.bottomMargin: 4
                        key: modelData[0]
                        description: modelData[1]
                        keyWidth: root.keyWidth
                    }
                }

                Divider {
                    Layout.fillWidth: true
                    Layout.topMargin: 8
                    Layout.bottomMargin: 8
                }

                Heading {
                    text: qsTr("Supported formats")
                }

                RowLayout {
                    Layout.leftMargin: 20
                    Layout.rightMargin: 20
                    Layout.bottomMargin: 20
                    spacing: 8

                    Repeater {
                        model: root.formats

                        Tag {
                            required property string modelData

                            text: modelData
                            textColor: Theme.accentStart
                            font.weight: Font.DemiBold
                            horizontalPadding: 10
                            verticalPadding: 4
                            radius: height / 2
                            color: Theme.faded(Theme.accentStart, 0.15)
                            isEdged: false
                        }
                    }
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
            Layout.fillHeight: false
            spacing: 8

            Label {
                text: qsTr("Need more help?")
                textFormat: Text.PlainText
                color: Theme.secondary
                font.pointSize: Theme.points(12)
            }

            SiteLink {
                view: root.view
                font.weight: Font.Medium
            }
        }
    }

    component Heading: Text {
        Layout.leftMargin: 20
        Layout.rightMargin: 20
        textFormat: Text.PlainText
        color: Theme.secondary
        font.pointSize: Theme.points(11)
        font.weight: Font.DemiBold
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
}
