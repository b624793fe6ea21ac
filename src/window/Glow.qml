import QtQuick

/// The light in the window's top left corner.
Canvas {
    id: root

    readonly property real reach: 480

    width: reach
    height: reach
    onPaint: {
        const context = getContext("2d");
        const light = context.createRadialGradient(0, 0, 0, 0, 0, reach);
        light.addColorStop(0, Theme.faded(Theme.accentStart, 0.07));
        light.addColorStop(1, Theme.faded(Theme.accentStart, 0));
        context.reset();
        context.fillStyle = light;
        context.fillRect(0, 0, width, height);
    }
}
