import QtQuick
import QtQuick.Controls.Basic

/// Turns while something is busy. Loaded only then: its style is a library of its own.
BusyIndicator {
    implicitWidth: 20
    implicitHeight: 20
    padding: 0
    Accessible.ignored: true // its button says it
    palette.dark: "white"
}
