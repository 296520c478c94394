import QtQuick
import QtQuick.Layouts
import Brindle.Models
import Brindle.Parts
import Brindle.Theme

// Whether earlier history is estimated, and how Brindle begins. Each choice holds as soon as it is made.
ColumnLayout {
    id: root

    required property SetupModel model
    required property StartupChoices startup

    spacing: Theme.gap

    SectionTitle {
        Layout.fillWidth: true
        text: Catalogue.translated("Earlier history")
    }
    Card {
        Layout.fillWidth: true

        SwitchRow {
            Layout.fillWidth: true
            text: Catalogue.translated("Estimate history from before Brindle")
            explanation: root.model.estimatesText
            isOn: root.model.showsEstimates
            onToggled: isOn => root.model.showsEstimates = isOn
        }
    }
    SectionTitle {
        Layout.fillWidth: true
        text: Catalogue.translated("Start-up")
    }
    Card {
        Layout.fillWidth: true
        spacing: Theme.gap

        SwitchRow {
            Layout.fillWidth: true
            text: root.startup.loginTitle
            explanation: root.startup.loginText
            isOn: root.startup.opensAtLogin
            isEnabled: root.startup.canOpenAtLogin
            onToggled: isOn => root.startup.opensAtLogin = isOn
        }
        Text {
            Layout.fillWidth: true
            visible: text !== ""
            text: root.startup.loginFailure
            font: Theme.secondary
            color: Theme.warning
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignLeft
            Accessible.role: Accessible.AlertMessage
            Accessible.name: text
        }
        SwitchRow {
            Layout.fillWidth: true
            text: root.startup.quietTitle
            explanation: root.startup.quietText
            isOn: root.startup.opensQuietly
            onToggled: isOn => root.startup.opensQuietly = isOn
        }
        SwitchRow {
            Layout.fillWidth: true
            text: root.startup.trayTitle
            explanation: root.startup.trayText
            isOn: root.startup.showsTrayItem
            onToggled: isOn => root.startup.showsTrayItem = isOn
        }
    }
    Text {
        Layout.fillWidth: true
        text: root.startup.closingNote
        font: Theme.secondary
        color: Theme.textSecondary
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignLeft
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
