import QtQuick
import QtQuick.Templates as T
import Brindle.Theme

// A way to somewhere else, in a line of text.
T.Button {
    id: root

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    verticalPadding: Theme.gapTiny
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    Accessible.name: root.text
    Accessible.onPressAction: root.clicked()
    Keys.onReturnPressed: root.clicked()
    Keys.onEnterPressed: root.clicked()

    contentItem: Text {
        text: root.text
        font.family: Theme.bodyEmphasis.family
        font.pixelSize: Theme.bodyEmphasis.pixelSize
        font.weight: Theme.bodyEmphasis.weight
        font.underline: root.hovered || root.visualFocus
        color: Theme.accent
        opacity: root.enabled ? 1 : 0.5
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.Wrap
    }
    background: Item {
        FocusRing {
            isShown: root.visualFocus
        }
    }

    HoverHandler {
        cursorShape: Qt.PointingHandCursor
    }
}
