// The rows and ends of a list see the view by its id, which qmllint of Qt 6.4 cannot follow.
// qmllint disable unqualified
import QtQuick
import QtQuick.Controls.Basic
import Stowlark.Window

/// One tab for each mode.
Rectangle {
    id: root

    required property ContentView view

    implicitWidth: row.implicitWidth + 8
    implicitHeight: row.implicitHeight + 8
    radius: 12
    color: Theme.rowSurface

    Accessible.role: Accessible.PageTabList
    Accessible.name: qsTr("Mode")

    Edge {
        radius: root.radius
    }

    Row {
        id: row

        anchors.centerIn: parent

        Repeater {
            model: root.view.modes

            TabButton {
                id: tab

                required property int index
                required property string modelData
                readonly property bool selected: root.view.mode === index

                text: modelData
                checked: selected
                Accessible.selectable: true
                Accessible.selected: selected
                font.pointSize: Theme.points(13)
                font.weight: Font.Medium
                horizontalPadding: 16
                verticalPadding: 6
                onClicked: root.view.mode = index
                Keys.onReturnPressed: tab.clicked()
                Keys.onEnterPressed: tab.clicked()
                Accessible.onPressAction: tab.clicked()

                contentItem: Text {
                    text: tab.text
                    font: tab.font
                    color: tab.selected ? "white" : Theme.faded(Theme.primary, 0.7)
                }

                background: Item {
                    AccentFill {
                        anchors.fill: parent
                        radius: 8
                        from: Theme.accentStart
                        to: Theme.accentEnd
                        visible: opacity > 0
                        opacity: tab.selected ? 1 : 0

                        Behavior on opacity {
                            NumberAnimation {
                                duration: 180
                                easing.type: Easing.InOutQuad
                            }
                        }
                    }

                    Rectangle {
                        anchors.fill: parent
                        visible: tab.visualFocus
                        radius: 8
                        color: "transparent"
                        border.width: 2
                        border.color: Theme.primary
                    }
                }
            }
        }
    }
}
