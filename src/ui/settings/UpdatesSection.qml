import QtQuick
import QtQuick.Layouts
import Brindle.Models
import Brindle.Parts
import Brindle.Theme

SettingsPage {
    id: root

    required property UpdateSettings model

    title: Catalogue.translated("Updates")

    Card {
        spacing: Theme.gap
        Layout.fillWidth: true

        SwitchRow {
            text: Catalogue.translated("Check for updates automatically")
            explanation: root.model.unavailableText
            isOn: root.model.checksAutomatically
            isEnabled: root.model.isAvailable
            onToggled: isOn => root.model.checksAutomatically = isOn
            Layout.fillWidth: true
        }
        SettingText {
            text: root.model.message
            color: Theme.text
            Accessible.role: Accessible.AlertMessage
        }
        Flow {
            spacing: Theme.gapSmall
            visible: root.model.isAvailable
            Layout.fillWidth: true

            PushButton {
                text: root.model.installTitle
                isDefault: true
                enabled: root.model.canInstall
                visible: root.model.hasUpdate
                onClicked: root.model.install()
            }
            PushButton {
                text: Catalogue.translated("Check Now")
                enabled: root.model.canCheckNow
                onClicked: root.model.checkNow()
            }
        }
    }
    SettingText {
        text: root.model.note
    }
}
