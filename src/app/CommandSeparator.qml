import QtQuick
import QtQuick.Controls.Basic
import Stowlark.Window

MenuSeparator {
    padding: 4

    contentItem: Divider {}
}
