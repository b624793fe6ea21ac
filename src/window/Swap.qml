import QtQuick

/// Fades an item out, changes it, and fades it in again.
SequentialAnimation {
    id: root

    required property Item item

    NumberAnimation {
        target: root.item
        property: "opacity"
        to: 0
        duration: 75
        easing.type: Easing.InQuad
    }

    PropertyAction {}

    NumberAnimation {
        target: root.item
        property: "opacity"
        to: 1
        duration: 75
        easing.type: Easing.OutQuad
    }
}
