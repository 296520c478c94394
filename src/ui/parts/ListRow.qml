import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Brindle.Theme

// A row that can be opened or chosen. Its content stands in a row and says with Layout how wide it is; `text`
// is what it is called for those who do not see it.
T.ItemDelegate {
    id: root

    default property alias content: row.data
    property bool isSelected: false

    signal activated

    implicitWidth: row.implicitWidth + leftPadding + rightPadding
    implicitHeight: row.implicitHeight + topPadding + bottomPadding
    padding: Theme.gapSmall
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    highlighted: root.isSelected
    Accessible.name: root.text
    Accessible.focusable: true
    Accessible.selectable: true
    Accessible.selected: root.isSelected
    Accessible.onPressAction: root.activated()
    Keys.onReturnPressed: root.activated()
    Keys.onEnterPressed: root.activated()
    onClicked: root.activated()

    contentItem: RowLayout {
        id: row

        spacing: Theme.gapSmall
    }
    background: Rectangle {
        color: root.isSelected ? Theme.selection : root.hovered || root.down ? Theme.raised : "transparent"
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
