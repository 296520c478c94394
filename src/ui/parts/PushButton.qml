import QtQuick
import QtQuick.Templates as T
import Brindle.Theme

// A button; the default one is what Return does.
T.Button {
    id: root

    property bool isDefault: false

    // Whole, or a layout that rounds it down would break the line.
    implicitWidth: Math.max(Theme.scaled(72), Math.ceil(implicitContentWidth) + leftPadding + rightPadding)
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    verticalPadding: Theme.gapSmall
    horizontalPadding: Theme.gap
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    Accessible.name: root.text
    Accessible.onPressAction: root.clicked()
    // A key that is held down is one press, whatever takes the button's place meanwhile.
    Keys.onReturnPressed: event => event.isAutoRepeat || root.clicked()
    Keys.onEnterPressed: event => event.isAutoRepeat || root.clicked()

    contentItem: Text {
        text: root.text
        font: Theme.bodyEmphasis
        color: root.isDefault ? Theme.onAccent : Theme.text
        opacity: root.enabled ? 1 : 0.5
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.Wrap
    }
    background: Rectangle {
        color: root.isDefault ? Theme.accent : root.hovered || root.down ? Theme.raised : Theme.surface
        border.color: root.isDefault ? (root.hovered || root.down ? Theme.text : Theme.accent) : Theme.controlLine
        border.width: Theme.borderWidth
        opacity: root.enabled ? 1 : 0.5
        radius: Theme.radius

        FocusRing {
            isShown: root.visualFocus
        }
    }

    HoverHandler {
        cursorShape: Qt.PointingHandCursor
    }
}
