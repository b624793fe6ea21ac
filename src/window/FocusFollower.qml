import QtQuick

/// Scrolls a pane so that the control which gets the focus is in sight.
Item {
    id: root

    required property Flickable pane

    function holds(item: Item): bool {
        while (item !== null && item !== root.pane.contentItem) {
            item = item.parent;
        }
        return item !== null;
    }

    Connections {
        target: root.Window.window

        function onActiveFocusItemChanged() {
            const item = root.Window.window.activeFocusItem;
            if (item === null || !root.pane.visible || !root.holds(item)) {
                return;
            }
            const top = item.mapToItem(root.pane, 0, 0).y - 14;
            const below = top + item.height + 28 - root.pane.height;
            root.pane.contentY += top < 0 ? top : Math.max(0, below);
            root.pane.returnToBounds();
        }
    }
}
