import QtQuick
import QtQuick.Layouts

/// A symbol and a title.
RowLayout {
    id: root

    required property string symbol
    property alias text: title.text

    spacing: 6
    Accessible.role: Accessible.Heading
    Accessible.name: text
    baselineOffset: title.y + title.baselineOffset

    Symbol {
        Layout.alignment: Qt.AlignBaseline
        name: root.symbol
        size: 12
        color: Theme.accentStart
    }

    Text {
        id: title

        Layout.alignment: Qt.AlignBaseline
        color: Theme.primary
        font.pointSize: Theme.points(13)
        font.weight: Font.DemiBold
        textFormat: Text.PlainText
    }
}
