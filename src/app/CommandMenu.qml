import QtQuick
import QtQuick.Controls.Basic
import Stowlark.Window

Menu {
    id: root

    padding: 4
    width: {
        let widest = 0;
        for (let i = 0; i < count; ++i)
            widest = Math.max(widest, itemAt(i).implicitWidth);
        return widest + leftPadding + rightPadding;
    }

    background: Rectangle {
        radius: 9
        color: Theme.window
        border.color: Theme.faded(Theme.primary, 0.2)
    }
}
