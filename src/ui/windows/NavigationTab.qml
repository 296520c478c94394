import QtQuick
import QtQuick.Layouts
import Brindle.Parts
import Brindle.Theme

// One page in the navigation; a long title takes two lines where there is little room. A plain item, as a stock
// button would call itself one to a screen reader.
Item {
    id: root

    required property string text
    required property bool isCurrent

    signal chosen

    implicitWidth: Math.ceil(label.implicitWidth) + 2 * Theme.gapSmall
    implicitHeight: label.implicitHeight + 2 * Theme.gapSmall
    activeFocusOnTab: true
    Layout.fillWidth: true
    Layout.maximumWidth: implicitWidth
    Layout.minimumWidth: 0
    Accessible.role: Accessible.PageTab
    Accessible.name: root.text
    Accessible.focusable: true
    Accessible.selectable: true
    Accessible.selected: root.isCurrent
    Accessible.onPressAction: root.chosen()
    Keys.onReturnPressed: root.chosen()
    Keys.onEnterPressed: root.chosen()
    Keys.onSpacePressed: root.chosen()

    Rectangle {
        anchors.fill: parent
        radius: Theme.radius
        color: hover.hovered ? Theme.raised : Theme.ground
    }
    Rectangle {
        visible: root.isCurrent
        height: Theme.focusWidth
        color: Theme.accent
        anchors {
            left: parent.left
            right: parent.right
            bottom: parent.bottom
            leftMargin: Theme.gapSmall
            rightMargin: Theme.gapSmall
        }
    }
    Text {
        id: label
        anchors.fill: parent
        anchors.margins: Theme.gapSmall
        text: root.text
        font: Theme.nav
        color: root.isCurrent ? Theme.text : Theme.textSecondary
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.WordWrap
        Accessible.ignored: true
    }
    FocusRing {
        isShown: root.activeFocus
    }
    HoverHandler {
        id: hover
        cursorShape: Qt.PointingHandCursor
    }
    TapHandler {
        onTapped: root.chosen()
    }
}
