import QtQuick
import QtQuick.Layouts
import Brindle.Models
import Brindle.Parts
import Brindle.Theme

SettingsPage {
    id: root

    required property CheckSettings model

    title: Catalogue.translated("Storage checks")

    Card {
        spacing: Theme.gap
        Layout.fillWidth: true

        SwitchRow {
            text: Catalogue.translated("Check automatically")
            isOn: root.model.checksAutomatically
            onToggled: isOn => root.model.checksAutomatically = isOn
            Layout.fillWidth: true
        }
        SettingLine {
            text: Catalogue.translated("Check every")

            ChoiceBox {
                label: Catalogue.translated("Check every")
                options: root.model.intervals
                currentIndex: root.model.interval
                onChosen: index => root.model.interval = index
            }
        }
        SettingText {
            text: root.model.scheduleText
        }
    }
    SectionTitle {
        text: Catalogue.translated("Included locations")
        visible: root.model.hasLocations
        Layout.fillWidth: true
        Layout.topMargin: Theme.gapSmall
    }
    Card {
        spacing: Theme.gap
        visible: root.model.hasLocations || root.model.locationsText !== ""
        Layout.fillWidth: true

        SettingText {
            text: root.model.locationsText
        }
        Repeater {
            model: root.model.locations

            IncludedLocation {
                model: root.model
            }
        }
    }
    Card {
        Layout.fillWidth: true

        SwitchRow {
            text: Catalogue.translated("Estimate history from before Brindle")
            explanation: root.model.estimatesText
            isOn: root.model.showsEstimates
            onToggled: isOn => root.model.showsEstimates = isOn
            Layout.fillWidth: true
        }
    }
    Card {
        Layout.fillWidth: true

        SwitchRow {
            text: Catalogue.translated("Notify about unusual growth")
            explanation: root.model.noticesText
            isOn: root.model.notifiesAboutGrowth
            onToggled: isOn => root.model.notifiesAboutGrowth = isOn
            Layout.fillWidth: true
        }
    }
}
