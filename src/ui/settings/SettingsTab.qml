import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Brindle.Parts
import Brindle.Theme

// One section in the sidebar.
T.TabButton {
    id: root

    required property string symbol
    required property bool isCurrent

    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    padding: Theme.gapSmall
    checkable: false
    focusPolicy: root.isCurrent ? Qt.StrongFocus : Qt.ClickFocus
    hoverEnabled: true
    Accessible.name: root.text
    Accessible.selectable: true
    Accessible.selected: root.isCurrent
    Accessible.onPressAction: root.clicked()

    contentItem: RowLayout {
        spacing: Theme.gapSmall

        Symbol {
            name: root.symbol
            color: root.isCurrent ? Theme.accent : Theme.textSecondary
        }
        Text {
            Layout.fillWidth: true
            text: root.text
            font: Theme.nav
            color: root.isCurrent ? Theme.text : Theme.textSecondary
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignLeft
            Accessible.ignored: true
        }
    }
    background: Rectangle {
        color: root.isCurrent ? Theme.selection : root.hovered || root.down ? Theme.raised : "transparent"
        radius: Theme.radius

        FocusRing {
            anchors.margins: 0
            isShown: root.visualFocus
        }
    }

    HoverHandler {
        cursorShape: Qt.PointingHandCursor
    }
}
