import QtQuick

/// The application's icon; its corners are rounded by 9 points at a size of 38.
Item {
    id: root

    required property real size

    implicitWidth: size
    implicitHeight: size

    SoftShadow {
        visible: image.status === Image.Ready
        y: root.size / 20
        width: root.size
        height: root.size
        radius: root.size * 9 / 38
        blur: root.size / 8
        color: Qt.rgba(0, 0, 0, 0.3)
    }

    Image {
        id: image

        source: "image://symbol/AppIcon"
        sourceSize.width: root.size
        sourceSize.height: root.size
    }
}
