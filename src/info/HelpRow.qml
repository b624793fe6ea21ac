import QtQuick
import QtQuick.Layouts
import Stowlark.Window

/// What to do, and how, in two columns.
RowLayout {
    id: root

    required property string key
    required property string description
    /// Of the first column.
    required property real keyWidth

    spacing: 12
    Accessible.role: Accessible.StaticText
    Accessible.name: key + ": " + description

    Text {
        Layout.alignment: Qt.AlignTop
        Layout.preferredWidth: root.keyWidth
        text: root.key
        textFormat: Text.PlainText
        horizontalAlignment: Text.AlignRight
        color: Theme.accentStart
        font.pointSize: Theme.points(12)
        font.weight: Font.DemiBold
    }

    Text {
        Layout.alignment: Qt.AlignTop
        Layout.fillWidth: true
        Layout.preferredWidth: 248
        text: root.description
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        color: Theme.primary
        font.pointSize: Theme.points(12)
    }
}
