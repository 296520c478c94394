import QtQuick
import QtQuick.Templates as T
import Brindle.Theme

// A button that shows a symbol; its words are in the tooltip, and read to those who do not see it.
T.Button {
    id: root

    required property string symbol

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    padding: Theme.gapSmall
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    Accessible.name: root.text
    Accessible.onPressAction: root.clicked()
    Keys.onReturnPressed: root.clicked()
    Keys.onEnterPressed: root.clicked()

    contentItem: Symbol {
        name: root.symbol
        color: root.hovered ? Theme.text : Theme.textSecondary
        opacity: root.enabled ? 1 : 0.5
    }
    background: Rectangle {
        color: root.hovered || root.down ? Theme.raised : "transparent"
        radius: Theme.radius

        FocusRing {
            isShown: root.visualFocus
        }
    }

    HoverHandler {
        cursorShape: Qt.PointingHandCursor
    }
    Tooltip {
        text: root.text
        visible: root.hovered || root.visualFocus
    }
}
