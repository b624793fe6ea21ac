import QtQuick
import QtQuick.Layouts

/// A symbol and a title.
RowLayout {
    id: root

    required property string symbol
    property real symbolSize: 12
    property alias text: title.text
    property alias textColor: title.color
    property alias font: title.font

    spacing: 6
    Accessible.role: Accessible.Heading
    Accessible.name: text
    baselineOffset: title.y + title.baselineOffset

    Symbol {
        Layout.alignment: Qt.AlignBaseline
        name: root.symbol
        size: root.symbolSize
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
