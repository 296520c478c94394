import QtQuick
import QtQuick.Templates as T
import Brindle.Theme

// A button that shows a symbol; its words are in the tooltip, and read to those who do not see it. One that is
// switched on and off says in the tooltip what it does next.
T.Button {
    id: root

    required property string symbol
    property bool isFilled: false
    property string help: text

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    padding: Theme.gapSmall
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    Accessible.name: root.text
    Accessible.onPressAction: root.clicked()
    Accessible.onToggleAction: root.clicked()
    Keys.onReturnPressed: root.clicked()
    Keys.onEnterPressed: root.clicked()

    contentItem: Symbol {
        name: root.symbol
        color: root.checked ? Theme.accent : root.hovered ? Theme.text : Theme.textSecondary
        isFilled: root.isFilled
        opacity: root.enabled ? 1 : 0.5
    }
    background: Rectangle {
        color: root.checked ? Theme.selection : root.hovered || root.down ? Theme.raised : "transparent"
        radius: Theme.radius

        FocusRing {
            isShown: root.visualFocus
        }
    }

    HoverHandler {
        cursorShape: Qt.PointingHandCursor
    }
    Tooltip {
        text: root.help
        visible: root.hovered || root.visualFocus
    }
}
