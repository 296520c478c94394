import QtQuick
import Brindle.Parts
import Brindle.Theme

// Figures beside each other, as many in a line as there is room for. Below each, where there is one, the same
// figure of the days before.
Flow {
    id: root

    // Of rows with caption, amount, exact, tone and before.
    required property QtObject figures
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
            readonly property bool isLarge: root.isFirstLarge && entry.index === 0

            width: entry.isLarge ? root.width : Math.min(root.width, Math.max(figure.implicitWidth, earlier.implicitWidth))
            spacing: Theme.gapTiny

            Figure {
                id: figure

                width: parent.width
                caption: entry.caption
                amount: entry.amount
                exact: entry.exact
                tone: entry.tone
                isLarge: entry.isLarge
                isClickable: root.isClickable
                onActivated: root.activated()
            }
            Text {
                id: earlier

                width: parent.width
                visible: entry.before !== ""
                text: Catalogue.translated("before: ") + entry.before
                font: Theme.caption
                color: Theme.textSecondary
                wrapMode: Text.Wrap
            }
        }
    }
}
