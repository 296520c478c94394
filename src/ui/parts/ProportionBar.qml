import QtQuick
import Brindle.Theme

// How much was added, from the start, and freed, after it, as shares of the whole width. What is estimated is
// only outlined. The amounts stand beside it in words.
Item {
    id: root

    property double addedShare: 0
    property double freedShare: 0
    property bool isEstimated: false
    // Not in a list whose rows become those of another list.
    property bool isAnimated: true

    implicitWidth: Theme.scaled(120)
    implicitHeight: Theme.gapSmall
    Accessible.ignored: true

    Rectangle {
        anchors.fill: parent
        color: Theme.barTrack
        radius: height / 2
        visible: !root.isEstimated
    }
    Row {
        anchors.left: parent.left
        height: parent.height
        spacing: Theme.borderWidth

        BarPart {
            share: root.addedShare
            tone: root.isEstimated ? Theme.estimated : Theme.added
        }
        BarPart {
            share: root.freedShare
            tone: root.isEstimated ? Theme.estimated : Theme.freed
        }
    }

    component BarPart: Rectangle {
        required property double share
        required property color tone

        // What is there at all can be seen.
        width: share > 0 ? Math.max(Theme.gapTiny, share * root.width) : 0
        height: root.height
        radius: height / 2
        visible: share > 0
        color: root.isEstimated ? "transparent" : tone
        border.color: tone
        border.width: Theme.borderWidth

        Behavior on width  {
            enabled: root.isAnimated

            NumberAnimation {
                duration: Theme.motion
            }
        }
    }
}
