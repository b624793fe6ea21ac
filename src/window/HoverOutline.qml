import QtQuick

/// The outline of a rounded rectangle, blended from the first accent colour to the second.
Canvas {
    id: root

    required property real radius
    property real lineWidth: 2

    onWidthChanged: requestPaint()
    onHeightChanged: requestPaint()
    onPaint: {
        const context = getContext("2d");
        const blend = context.createLinearGradient(0, 0, width, 0);
        blend.addColorStop(0, Theme.accentStart);
        blend.addColorStop(1, Theme.accentEnd);
        context.reset();
        context.strokeStyle = blend;
        context.lineWidth = lineWidth;
        context.beginPath();
        context.roundedRect(lineWidth / 2, lineWidth / 2, width - lineWidth, height - lineWidth, radius, radius);
        context.stroke();
    }
}
