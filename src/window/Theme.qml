pragma Singleton

import QtQuick

/// The window's colours. The six of cards, rows and accents are fixed; the others follow the desktop.
QtObject {
    id: root

    readonly property color accentStart: Qt.rgba(0.23, 0.51, 0.96, 1)
    readonly property color accentEnd: Qt.rgba(0.55, 0.36, 0.96, 1)
    readonly property color cardSurface: white(0.055)
    readonly property color cardBorder: white(0.1)
    readonly property color rowSurface: white(0.04)
    readonly property color rowBorder: white(0.07)

    readonly property bool isLight: system.window.hslLightness > 0.5
    readonly property color primary: system.windowText
    readonly property color secondary: Qt.rgba(primary.r, primary.g, primary.b, 0.6)
    readonly property color window: system.window
    readonly property color success: isLight ? "#248a3d" : "#30d158"
    readonly property color folder: isLight ? "#007aff" : "#0a84ff"
    readonly property color danger: isLight ? "#d70015" : "#ff453a"
    readonly property color warning: isLight ? "#b45309" : "#ff9f0a"

    readonly property SystemPalette system: SystemPalette {}

    /// The size in points that is this many pixels where the desktop does not enlarge its texts.
    function points(pixels: real): real {
        return Qt.platform.os === "linux" ? pixels * 0.75 : pixels;
    }

    function white(opacity: real): color {
        return Qt.rgba(1, 1, 1, opacity);
    }

    /// The colour of a line that is laid over a fill of its own hue.
    function laidOver(fill: color, line: color): color {
        return faded(line, 1 - (1 - fill.a) * (1 - line.a));
    }

    function faded(base: color, opacity: real): color {
        return Qt.rgba(base.r, base.g, base.b, opacity);
    }
}
