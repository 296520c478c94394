import QtQuick
import Brindle.Theme

// A few days as small bars with their labels. One stop of the keyboard: Left and Right move between the days,
// Enter activates one.
FocusScope {
    id: root

    // Of rows with label, addedShare, freedShare, state and accessibleText; the shares are of one amount.
    required property QtObject model
    property int currentIndex: repeater.count - 1

    readonly property bool mirrored: LayoutMirroring.enabled
    readonly property real dayWidth: repeater.count > 0 ? root.width / repeater.count : 0

    signal activated(int index)

    function moveBy(days: int) {
        root.currentIndex = Math.max(0, Math.min(root.currentIndex + days, repeater.count - 1));
    }

    Accessible.name: Catalogue.translated("Changes by day")
    Accessible.role: Accessible.List
    activeFocusOnTab: true
    implicitHeight: Theme.scaled(2 * Theme.margin + Theme.gapLarge) + 2 * Theme.gapTiny

    Keys.onEnterPressed: root.activated(root.currentIndex)
    Keys.onLeftPressed: root.moveBy(root.mirrored ? 1 : -1)
    Keys.onReturnPressed: root.activated(root.currentIndex)
    Keys.onRightPressed: root.moveBy(root.mirrored ? -1 : 1)
    Keys.onSpacePressed: root.activated(root.currentIndex)

    Row {
        anchors.fill: parent

        Repeater {
            id: repeater

            model: root.model

            Item {
                id: day

                required property int index
                required property string label
                required property real addedShare
                required property real freedShare
                required property string state
                required property string accessibleText

                Accessible.name: day.accessibleText
                Accessible.role: Accessible.ListItem
                height: root.height
                width: root.dayWidth

                Accessible.onPressAction: root.activated(day.index)

                Rectangle {
                    anchors.fill: parent
                    border.color: Theme.focusRing
                    border.width: root.activeFocus && root.currentIndex === day.index ? Theme.focusWidth : 0
                    color: area.containsMouse ? Theme.raised : "transparent"
                    radius: Theme.radius
                }
                DayBar {
                    addedLength: day.addedShare / 2
                    anchors.bottom: caption.top
                    anchors.horizontalCenter: parent.horizontalCenter
                    anchors.margins: Theme.gapTiny
                    anchors.top: parent.top
                    dayState: day.state
                    freedLength: day.freedShare / 2
                    width: Math.min(Theme.gapLarge, Math.round(parent.width / 2))
                    zeroPlace: 0.5
                }
                Rectangle {
                    color: Theme.line
                    height: Theme.borderWidth
                    width: parent.width
                    y: Math.round((caption.y) / 2)
                }
                Text {
                    id: caption

                    anchors.bottom: parent.bottom
                    color: Theme.textSecondary
                    elide: Text.ElideRight
                    font: Theme.caption
                    horizontalAlignment: Text.AlignHCenter
                    text: day.label
                    width: parent.width
                }
                MouseArea {
                    id: area

                    anchors.fill: parent
                    hoverEnabled: true

                    onClicked: {
                        root.currentIndex = day.index;
                        root.activated(day.index);
                    }
                }
            }
        }
    }
}
