import QtQuick
import Brindle.Models
import Brindle.Parts
import Brindle.Theme

// The figures of the day that is read.
Column {
    id: root

    required property TrendsModel model

    spacing: Theme.gapTiny

    Text {
        width: parent.width
        text: root.model.currentState === "recorded" ? root.model.currentDay : root.model.currentDay + " · " + root.model.currentWord
        font: Theme.label
        color: Theme.text
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignLeft
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    Flow {
        width: parent.width
        spacing: Theme.gap

        Repeater {
            model: root.model.currentFigures

            Row {
                id: entry

                required property string caption
                required property string amount
                required property string exact
                required property int tone

                spacing: Theme.gapTiny

                Text {
                    anchors.baseline: amount.baseline
                    text: entry.caption
                    horizontalAlignment: Text.AlignLeft
                    font: Theme.caption
                    color: Theme.textSecondary
                }
                ByteAmount {
                    id: amount

                    amount: entry.amount
                    exact: entry.exact
                    tone: entry.tone
                }
            }
        }
    }
}
