import QtQuick
import QtQuick.Templates as T
import Brindle.Theme

// Words beside the pointer or the keyboard's place, after a moment.
T.ToolTip {
    id: root

    x: parent ? (parent.width - implicitWidth) / 2 : 0
    y: parent ? parent.height + Theme.gapTiny : 0
    implicitWidth: Math.min(implicitContentWidth, Theme.scaled(320)) + leftPadding + rightPadding
    implicitHeight: contentHeight + topPadding + bottomPadding
    margins: Theme.gapTiny
    padding: Theme.gapSmall
    delay: 500
    // Not on Escape: that key would be lost for what it is meant to close.
    closePolicy: T.Popup.CloseOnPressOutsideParent | T.Popup.CloseOnReleaseOutsideParent

    contentItem: Text {
        text: root.text
        font: Theme.caption
        color: Theme.text
        wrapMode: Text.Wrap
    }
    background: Rectangle {
        color: Theme.raised
        border.color: Theme.line
        border.width: Theme.borderWidth
        radius: Theme.radius
    }
}
