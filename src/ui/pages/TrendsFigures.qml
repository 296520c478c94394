import QtQuick
import QtQuick.Layouts
import Brindle.Models
import Brindle.Theme

// The figures of the range beside those of the one before it, or why there are none.
ColumnLayout {
    id: root

    required property TrendsModel model

    spacing: Theme.gapSmall

    FigureFlow {
        figures: root.model.figures
        isClickable: root.model.hasFigures
        Layout.fillWidth: true
        onActivated: root.model.showRange()
    }
    Sentence {
        text: root.model.coverage
    }
    Sentence {
        text: root.model.comparison
    }
    Repeater {
        model: root.model.notes

        Sentence {
            required property string modelData

            text: modelData
        }
    }

    component Sentence: Text {
        visible: text !== ""
        font: Theme.secondary
        color: Theme.textSecondary
        wrapMode: Text.Wrap
        Layout.fillWidth: true
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
