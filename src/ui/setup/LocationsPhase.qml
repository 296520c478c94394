import QtQuick
import QtQuick.Layouts
import Brindle.Models
import Brindle.Parts
import Brindle.Theme

// What is included, and what else might be.
ColumnLayout {
    id: root

    required property SetupModel model
    readonly property LocationChoice choice: root.model.locations

    spacing: Theme.gap

    SectionTitle {
        Layout.fillWidth: true
        text: Catalogue.translated("Included")
    }
    Card {
        Layout.fillWidth: true
        spacing: Theme.gap

        Text {
            Layout.fillWidth: true
            visible: !root.choice.hasChosen
            text: Catalogue.translated("Nothing yet. Choose at least one folder or drive.")
            font: Theme.body
            color: Theme.textSecondary
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignLeft
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        Repeater {
            model: root.choice.chosen

            ChoiceRow {
                required property int index
                required property bool canTakeOut

                Layout.fillWidth: true
                actionText: canTakeOut ? Catalogue.translated("Take out") : ""
                onActed: root.choice.takeOut(index)
            }
        }
    }
    SectionTitle {
        Layout.fillWidth: true
        visible: root.choice.hasSuggestions
        text: Catalogue.translated("Suggested")
    }
    Card {
        Layout.fillWidth: true
        visible: root.choice.hasSuggestions
        spacing: Theme.gap

        Repeater {
            model: root.choice.suggestions

            ChoiceRow {
                required property int index

                Layout.fillWidth: true
                actionText: obstacle === "" ? Catalogue.translated("Include") : ""
                onActed: root.choice.includeSuggestion(index)
            }
        }
    }
    PushButton {
        text: Catalogue.translated("Choose another folder…")
        onClicked: root.choice.chooseFolder()
    }
}
