import QtQuick

/// The outline of a surface on a light desktop, where its white alone would not show.
Rectangle {
    anchors.fill: parent
    visible: Theme.isLight
    color: "transparent"
    border.color: Theme.faded(Theme.primary, 0.12)
}
