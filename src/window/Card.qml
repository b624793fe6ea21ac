import QtQuick
import QtQuick.Layouts

/// A padded, outlined column.
Rectangle {
    id: root

    default property alias content: column.data
    property alias spacing: column.spacing

    implicitWidth: column.implicitWidth + 32
    implicitHeight: column.implicitHeight + 32
    radius: 14
    color: Theme.cardSurface
    border.color: Theme.laidOver(Theme.cardSurface, Theme.cardBorder)

    Edge {
        radius: root.radius
    }

    ColumnLayout {
        id: column

        anchors.fill: parent
        anchors.margins: 16
        spacing: 12
    }
}
