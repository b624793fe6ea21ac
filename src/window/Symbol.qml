import QtQuick

/// A symbol that goes with text of `size`, also where the desktop enlarges its texts. It stands on whole pixels of the device.
Item {
    id: root

    required property string name
    required property real size
    property color color: Theme.primary

    readonly property real scaledSize: Theme.points(size) * Screen.logicalPixelDensity * 25.4 / 72
    readonly property real ratio: Screen.devicePixelRatio
    /// An even number, for the middle of a tile.
    readonly property int pixels: 2 * Math.round(scaledSize * ratio * 2 / 3)

    function align() {
        const x = (width - image.width) / 2;
        const y = (height - image.height) / 2;
        const at = mapToItem(null, x, y);
        image.x = x + Math.round(at.x * ratio) / ratio - at.x;
        image.y = y + Math.round(at.y * ratio) / ratio - at.y;
    }

    implicitWidth: pixels / ratio
    implicitHeight: pixels / ratio
    baselineOffset: height / 2 + scaledSize * 0.36 // half of a capital's height

    Image {
        id: image

        width: root.pixels / root.ratio
        height: root.pixels / root.ratio
        source: "image://symbol/" + root.name + "/" + root.pixels + "/" + String(root.color).slice(1)
    }

    Connections {
        target: root.Window.window

        function onAfterAnimating() {
            root.align();
        }
    }
}
