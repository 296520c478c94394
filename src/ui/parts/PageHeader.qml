import QtQuick
import QtQuick.Layouts
import Brindle.Theme

// The title of a page and what can be done with it, beside it where there is room. Placed by hand: whether there
// is room must not depend on where things have been placed.
Item {
    id: root

    required property string title
    property string subtitle: ""
    default property alias actions: actionRow.data

    readonly property real textWidth: Math.ceil(Math.max(titleText.implicitWidth, subtitleText.implicitWidth))
    readonly property bool isOneRow: root.textWidth + Theme.gap + actionRow.implicitWidth <= root.width
    readonly property bool isMirrored: root.LayoutMirroring.enabled

    implicitWidth: root.textWidth + Theme.gap + actionRow.implicitWidth
    implicitHeight: root.isOneRow || actionRow.implicitWidth === 0 ? Math.max(texts.implicitHeight, actionRow.implicitHeight) : texts.implicitHeight + Theme.gapSmall + actionRow.implicitHeight

    Column {
        id: texts

        width: root.isOneRow ? root.width - actionRow.implicitWidth - Theme.gap : root.width
        x: root.isMirrored ? root.width - width : 0
        y: root.isOneRow ? Math.round((root.height - implicitHeight) / 2) : 0
        spacing: Theme.gapTiny

        Text {
            id: titleText

            width: texts.width
            text: root.title
            font: Theme.pageTitle
            color: Theme.text
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignLeft
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        Text {
            id: subtitleText

            width: texts.width
            visible: text !== ""
            text: root.subtitle
            font: Theme.secondary
            color: Theme.textSecondary
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignLeft
        }
    }
    RowLayout {
        id: actionRow

        width: Math.min(implicitWidth, root.width)
        x: root.isOneRow !== root.isMirrored ? root.width - width : 0
        y: root.isOneRow ? Math.round((root.height - implicitHeight) / 2) : root.height - implicitHeight
        spacing: Theme.gapSmall
    }
}
