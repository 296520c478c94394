import QtQuick
import QtQuick.Layouts
import Brindle.Theme

// A control at the end of the line that says what it is for, or below that where there is no room beside it.
// Placed by hand: whether there is room must not depend on where things have been placed.
Item {
    id: root

    required property string text
    default property alias control: holder.data

    readonly property bool isOneRow: label.implicitWidth + Theme.gap + holder.implicitWidth <= root.width
    readonly property bool isMirrored: root.LayoutMirroring.enabled

    implicitHeight: root.isOneRow ? Math.max(label.implicitHeight, holder.implicitHeight) : label.implicitHeight + Theme.gapSmall + holder.implicitHeight
    Layout.fillWidth: true

    Text {
        id: label

        x: root.isMirrored ? root.width - width : 0
        y: root.isOneRow ? Math.round((root.height - height) / 2) : 0
        width: root.isOneRow ? implicitWidth : root.width
        text: root.text
        font: Theme.body
        color: Theme.text
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignLeft
        Accessible.ignored: true
    }
    Row {
        id: holder

        x: root.isOneRow !== root.isMirrored ? root.width - width : 0
        y: root.isOneRow ? Math.round((root.height - height) / 2) : root.height - height
    }
}
