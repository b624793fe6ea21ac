import QtQuick

Text {
    color: Theme.primary
    font.pixelSize: 13
    font.weight: Font.DemiBold
    textFormat: Text.PlainText
}
