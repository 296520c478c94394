import QtQuick
import QtQuick.Layouts
import Brindle.Models
import Brindle.Parts
import Brindle.Theme

SettingsPage {
    id: root

    required property SettingsModel model

    title: Catalogue.translated("Appearance")

    Card {
        spacing: Theme.gap
        Layout.fillWidth: true

        SettingLine {
            text: Catalogue.translated("Appearance")

            SegmentedChoice {
                text: Catalogue.translated("Appearance")
                options: root.model.appearances
                currentIndex: root.model.appearance
                onChosen: index => root.model.appearance = index
            }
        }
        SettingText {
            text: Catalogue.translated("System follows what your desktop is set to.")
        }
    }
    Card {
        Layout.fillWidth: true

        SettingLine {
            text: Catalogue.translated("Text size")

            SegmentedChoice {
                text: Catalogue.translated("Text size")
                options: root.model.textSizes
                currentIndex: root.model.textSize
                onChosen: index => root.model.textSize = index
            }
        }
    }
}
