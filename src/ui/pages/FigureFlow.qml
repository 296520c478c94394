import QtQuick
import Brindle.Parts
import Brindle.Theme

// Figures beside each other, as many in a line as there is room for. Below each, where there is one, the same
// figure of the days before.
Flow {
    id: root

    // Of rows with caption, amount, exact, tone and before.
    required property QtObject figures
    // The first one stands in a line of its own, in large digits where they fit.
    property bool isFirstLarge: false
    property bool isClickable: false

    signal activated

    spacing: Theme.gapLarge

    Repeater {
        model: root.figures

        Column {
            id: entry

            required property int index
            required property string caption
            required property string amount
            required property string exact
            required property int tone
            required property string before
            readonly property bool isFirst: root.isFirstLarge && entry.index === 0

            width: entry.isFirst ? root.width : implicitWidth
            spacing: Theme.gapTiny

            TextMetrics {
                id: large

                font: Theme.figureLarge
                text: entry.amount
            }
            Figure {
                anchors.left: parent.left
                caption: entry.caption
                amount: entry.amount
                exact: entry.exact
                tone: entry.tone
                isLarge: entry.isFirst && large.advanceWidth <= root.width
                isClickable: root.isClickable
                onActivated: root.activated()
            }
            Text {
                anchors.left: parent.left
                visible: entry.before !== ""
                text: Catalogue.translated("before: {}").replace("{}", entry.before)
                horizontalAlignment: Text.AlignLeft
                font: Theme.caption
                color: Theme.textSecondary
            }
        }
    }
}
