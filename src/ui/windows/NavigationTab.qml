import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Brindle.Parts
import Brindle.Theme

// One page in the navigation; a long title takes two lines where there is little room.
T.AbstractButton {
    id: root

    required property bool isCurrent

    leftPadding: Theme.gapSmall
    rightPadding: Theme.gapSmall
    topPadding: Theme.gapSmall
    bottomPadding: Theme.gapSmall
    implicitWidth: leftPadding + Math.ceil(label.implicitWidth) + rightPadding
    implicitHeight: topPadding + label.implicitHeight + bottomPadding
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    Layout.fillWidth: true
    Layout.maximumWidth: implicitWidth
    Layout.minimumWidth: 0
    Accessible.role: Accessible.PageTab
    Accessible.name: root.text
    Accessible.selected: root.isCurrent
    Accessible.onPressAction: root.click()

    Keys.onReturnPressed: root.click()
    Keys.onEnterPressed: root.click()

    contentItem: Text {
        id: label
        text: root.text
        font: Theme.nav
        color: root.isCurrent ? Theme.text : Theme.textSecondary
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.WordWrap
        Accessible.ignored: true
    }
    background: Rectangle {
        radius: Theme.radius
        color: root.hovered ? Theme.raised : Theme.ground

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
        FocusRing {
            isShown: root.visualFocus
        }
    }
}
