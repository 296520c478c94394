import QtQuick
import Brindle.Theme

// Shows where the keyboard is, around the item that it is put into.
Rectangle {
    property bool isShown: false

    anchors.fill: parent
    anchors.margins: -Theme.focusWidth
    visible: isShown
    color: "transparent"
    border.color: Theme.focusRing
    border.width: Theme.focusWidth
    radius: Theme.radius + Theme.focusWidth
}
