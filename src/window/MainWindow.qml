// The second pane sees the view by its id, which qmllint of Qt 6.4 cannot follow.
// qmllint disable unqualified
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Stowlark.Window

ApplicationWindow {
    id: root

    required property ContentView view
    /// The height of the title bar where the content lies under it, else 0.
    property real titleBarHeight: 0
    /// How much of the upper edge it covers.
    readonly property real covered: visibility === Window.FullScreen ? 0 : titleBarHeight
    /// The height of what is above and below the content.
    readonly property real around: titleBarHeight + (menuBar?.height ?? 0) + (footer?.height ?? 0)

    title: "Stowlark"
    width: 580
    height: Math.min(820, Screen.desktopAvailableHeight - 40 - around) + around
    minimumWidth: 560
    minimumHeight: 620 + around
    visible: true
    color: Theme.window
    palette.window: Theme.system.window
    palette.windowText: Theme.system.windowText
    palette.base: Theme.system.base
    palette.text: Theme.system.text
    palette.button: Theme.system.button
    palette.buttonText: Theme.system.buttonText
    palette.light: Theme.system.light
    palette.midlight: Theme.system.midlight
    palette.mid: Theme.system.mid
    palette.dark: Theme.system.text
    palette.highlight: Theme.system.highlight
    palette.highlightedText: Theme.system.highlightedText

    background: Item { // under the menus too
        Glow {}
    }

    Shortcut {
        sequence: "Ctrl+O"
        onActivated: root.view.mode === 0 ? root.view.browseFiles() : root.view.browseArchive()
    }

    Shortcut {
        sequence: "Ctrl+1"
        onActivated: root.view.mode = 0
    }

    Shortcut {
        sequence: "Ctrl+2"
        onActivated: root.view.mode = 1
    }

    Shortcut {
        sequences: ["Ctrl+Return", "Ctrl+Enter"]
        onActivated: root.view.mode === 0 ? root.view.create() : root.view.extract()
    }

    Item { // what lies under the title bar moves the window as that does
        y: -root.contentItem.y
        width: parent.width
        height: root.covered

        DragHandler {
            target: null
            onActiveChanged: if (active)
                root.startSystemMove()
        }
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.topMargin: Math.max(0, root.covered - root.contentItem.y) // which Qt sees to from 6.9 on
        spacing: 0

        RowLayout {
            Layout.margins: 16
            spacing: 12

            AppIcon {
                size: 38
            }

            ColumnLayout {
                spacing: 0

                Label {
                    text: "Stowlark"
                    color: Theme.primary
                    font.pointSize: Theme.points(17)
                    font.weight: Font.Bold
                }

                SiteLink {
                    view: root.view
                    text: root.view.siteLabel
                    color: Theme.faded(Theme.accentStart, 0.85)
                    font.pointSize: Theme.points(11)
                }
            }

            Item {
                Layout.fillWidth: true
            }

            ModePicker {
                view: root.view
            }
        }

        Divider {
            Layout.fillWidth: true
        }

        Loader {
            Layout.fillWidth: true
            Layout.leftMargin: 20
            Layout.rightMargin: 20
            Layout.topMargin: 14
            visible: active
            active: root.view.updater.hasRelease

            sourceComponent: UpdateBanner {
                view: root.view
            }
        }

        StackLayout {
            currentIndex: root.view.mode

            CompressPane {
                enabled: root.view.mode === 0 // else it would keep the keyboard
                view: root.view
            }

            Loader { // made when it is first shown
                active: root.view.mode === 1 || item !== null

                sourceComponent: ExtractPane {
                    enabled: root.view.mode === 1
                    view: root.view
                }
            }
        }
    }
}
