import QtQuick
import QtQuick.Templates as T

/// Scrolls a pane so that the control which gets the focus is in sight, and finds another one when the focus is
/// lost: as its control vanishes, or the pane is changed.
Item {
    id: root

    required property Flickable pane
    /// Takes the focus when nothing else is near.
    required property Item home
    /// What had the focus most recently, in the pane or elsewhere; null once that is destroyed.
    property Item last: null
    property bool hadLast: false
    /// The same, in the pane alone.
    property Item lastHere: null
    property bool lastWasVisual: true

    function isIn(item: Item, place: Item): bool {
        while (item !== null && item !== place) {
            item = item.parent;
        }
        return item === place;
    }

    function holds(item: Item): bool {
        return isIn(item, root.pane.contentItem);
    }

    function show(item: Item) {
        const top = item.mapToItem(root.pane, 0, 0).y - 14;
        const below = top + item.height + 28 - root.pane.height;
        root.pane.contentY += top < 0 ? top : Math.max(0, below);
        root.pane.returnToBounds();
    }

    /// Nothing has the focus but what is around the controls of the pane, or of the other one.
    function isLost(): bool {
        const window = root.Window.window;
        const item = window?.activeFocusItem ?? null;
        return window?.active && root.pane.enabled && (isIn(root.pane, item) || !item.visible);
    }

    function give(item: Item) {
        item.forceActiveFocus(root.lastWasVisual ? Qt.TabFocusReason : Qt.OtherFocusReason);
    }

    function enter() {
        if (isLost()) {
            const there = root.lastHere !== null && root.lastHere.visible && root.lastHere.enabled;
            give(there ? root.lastHere : root.home);
        }
    }

    function recover() {
        if (root.last?.visible && root.last.parent.enabled) {
            return; // a button that is busy will have the focus again
        }
        if (root.last !== null && isLost() && holds(root.last)) {
            const near = root.last.nextItemInFocusChain(false);
            give(holds(near) ? near : root.home);
        } else if (root.hadLast) {
            enter();
        }
    }

    onEnabledChanged: entering.start() // with its pane
    Component.onCompleted: entering.start()

    Timer {
        id: entering

        interval: 0
        onTriggered: root.enter()
    }

    Timer {
        id: recovering

        interval: 0
        onTriggered: root.recover()
    }

    Connections {
        target: root.Window.window

        function onActiveFocusItemChanged() {
            const item = root.Window.window.activeFocusItem;
            if (item === null || !item.activeFocusOnTab) {
                recovering.start();
                return;
            }
            root.last = item;
            root.hadLast = true;
            root.lastWasVisual = (item as T.Control)?.visualFocus ?? true;
            if (root.pane.visible && root.holds(item)) {
                root.lastHere = item;
                root.show(item);
            }
        }
    }
}
