import QtQuick
import QtQuick.Layouts
import Brindle.Models
import Brindle.Parts
import Brindle.Theme

// What is known of the selected day, and the way to its changes.
Card {
    id: root

    required property StorageHistoryModel model

    spacing: Theme.gap

    SectionTitle {
        text: root.model.day
        Layout.fillWidth: true
    }
    RowLayout {
        spacing: Theme.gapSmall
        Layout.fillWidth: true

        Symbol {
            name: root.model.dayState === "partial" ? "warning" : root.model.dayState === "recorded" ? "check" : "clock"
            color: root.model.dayState === "partial" ? Theme.warning : Theme.textSecondary
        }
        Text {
            text: root.model.dayWord
            font: Theme.label
            color: root.model.dayState === "estimated" ? Theme.estimated : Theme.text
            wrapMode: Text.Wrap
            Layout.fillWidth: true
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
    FigureFlow {
        figures: root.model.dayFigures
        isFirstLarge: true
        isClickable: root.model.hasChanges
        Layout.fillWidth: true
        onActivated: root.model.showChanges()
    }
    Paragraph {
        text: root.model.daySentence
        color: Theme.text
    }
    Repeater {
        model: root.model.dayNotes

        Paragraph {
            required property string modelData

            text: modelData
        }
    }
    Paragraph {
        text: root.model.dayEstimate
        color: Theme.estimated
    }
    Flow {
        spacing: Theme.gapSmall
        visible: root.model.hasChanges
        Layout.fillWidth: true

        PushButton {
            text: Catalogue.translated("Show changes")
            onClicked: root.model.showChanges()
        }
        PushButton {
            text: Catalogue.translated("Export…")
            onClicked: root.model.exportDay()
        }
    }

    component Paragraph: Text {
        visible: text !== ""
        font: Theme.body
        color: Theme.textSecondary
        wrapMode: Text.Wrap
        Layout.fillWidth: true
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
