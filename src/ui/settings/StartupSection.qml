import QtQuick
import QtQuick.Layouts
import Brindle.Models
import Brindle.Parts
import Brindle.Theme

SettingsPage {
    id: root

    required property StartupChoices model

    title: Catalogue.translated("Startup")

    Card {
        spacing: Theme.gap
        Layout.fillWidth: true

        SwitchRow {
            text: root.model.loginTitle
            explanation: root.model.loginText
            isOn: root.model.opensAtLogin
            isEnabled: root.model.canOpenAtLogin
            onToggled: isOn => root.model.opensAtLogin = isOn
            Layout.fillWidth: true
        }
        RowLayout {
            spacing: Theme.gapSmall
            visible: root.model.loginFailure !== ""
            Layout.fillWidth: true

            Symbol {
                name: "warning"
                color: Theme.warning
                Layout.alignment: Qt.AlignTop
            }
            SettingText {
                text: root.model.loginFailure
                color: Theme.warning
                Accessible.role: Accessible.AlertMessage
            }
        }
        SwitchRow {
            text: root.model.quietTitle
            explanation: root.model.quietText
            isOn: root.model.opensQuietly
            onToggled: isOn => root.model.opensQuietly = isOn
            Layout.fillWidth: true
        }
    }
    Card {
        Layout.fillWidth: true

        SwitchRow {
            text: root.model.trayTitle
            explanation: root.model.trayText
            isOn: root.model.showsTrayItem
            onToggled: isOn => root.model.showsTrayItem = isOn
            Layout.fillWidth: true
        }
    }
    SettingText {
        text: root.model.closingNote
    }
}
