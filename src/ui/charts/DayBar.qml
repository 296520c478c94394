import QtQuick
import Brindle.Charts
import Brindle.Theme

// What came on one day, above a zero line, and what went, below it. Measured bars are solid, estimated ones
// hatched; a day on which nothing changed has a stroke on the line, and one without a check has nothing.
Item {
    id: root

    required property string dayState
    // Shares of the item's height.
    required property real addedLength
    required property real freedLength
    required property real zeroPlace

    readonly property bool isRecorded: root.dayState === "recorded" || root.dayState === "partial"
    readonly property real zeroLine: Math.round(root.zeroPlace * root.height)
    readonly property real leastLength: 2 * Theme.borderWidth

    function shown(length: real): real {
        return length > 0 ? Math.max(root.leastLength, Math.round(length * root.height)) : 0;
    }

    Rectangle {
        id: added

        readonly property bool isEstimated: root.dayState === "estimated"

        anchors.horizontalCenter: parent.horizontalCenter
        border.color: Theme.estimated
        border.width: added.isEstimated ? Theme.borderWidth : 0
        color: added.isEstimated ? "transparent" : Theme.added
        height: root.shown(root.addedLength)
        width: parent.width
        y: root.zeroLine - added.height

        HatchPattern {
            anchors.fill: parent
            color: Theme.estimated
            lineWidth: Theme.borderWidth
            spacing: Theme.gapTiny
            visible: added.isEstimated
        }
    }
    Rectangle {
        color: Theme.freed
        height: root.shown(root.freedLength)
        width: parent.width
        y: root.zeroLine
    }
    Rectangle {
        color: Theme.textSecondary
        height: root.leastLength
        visible: root.isRecorded && root.addedLength <= 0 && root.freedLength <= 0
        width: parent.width
        y: root.zeroLine - root.leastLength / 2
    }
    CornerMark {
        readonly property real side: Math.min(Theme.gapSmall, parent.width)

        anchors.right: parent.right
        color: Theme.warning
        height: side
        isMirrored: root.LayoutMirroring.enabled
        visible: root.dayState === "partial"
        width: side
        y: added.y - height - Theme.borderWidth
    }
}
