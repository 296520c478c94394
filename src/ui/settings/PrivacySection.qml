import QtQuick
import QtQuick.Layouts
import Brindle.Models
import Brindle.Parts
import Brindle.Theme

SettingsPage {
    id: root

    required property SettingsModel model

    title: Catalogue.translated("Privacy & data")

    Card {
        Layout.fillWidth: true

        SettingText {
            text: root.model.staysHereText
            font: Theme.bodyEmphasis
            color: Theme.text
        }
        SettingText {
            text: root.model.recordsText
        }
    }
    Card {
        Layout.fillWidth: true

        SettingText {
            text: Catalogue.translated("Update checks")
            font: Theme.bodyEmphasis
            color: Theme.text
        }
        SettingText {
            text: root.model.updates.requestText
        }
    }
    Card {
        spacing: Theme.gap
        Layout.fillWidth: true

        FolderLine {
            text: Catalogue.translated("History folder")
            explanation: root.model.historyFolder
            onShown: root.model.showHistoryFolder()
        }
        FolderLine {
            text: Catalogue.translated("Statements")
            explanation: root.model.statementsText
            onShown: root.model.showStatementsFolder()
        }
    }
}
