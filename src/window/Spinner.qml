import QtQuick.Controls.Basic

/// Turns while something is busy. Loaded only then: its style is a library of its own.
BusyIndicator {
    implicitWidth: 20
    implicitHeight: 20
    padding: 0
    palette.dark: "white"
}
