import QtQuick
import QtQuick.Layouts
import Brindle.Marks
import Brindle.Models
import Brindle.Parts
import Brindle.Theme

DialogSheet {
    id: root

    required property AboutModel model

    title: "Brindle"
    text: root.model.product

    details: ColumnLayout {
        spacing: Theme.gap
        Layout.fillWidth: true

        RowLayout {
            spacing: Theme.gap
            Layout.fillWidth: true

            BrandMark {
                size: Theme.scaled(Theme.margin)
            }
            ColumnLayout {
                spacing: Theme.gapTiny
                Layout.fillWidth: true

                AboutText {
                    text: root.model.version
                }
                AboutText {
                    text: root.model.copyright
                }
            }
        }
        ColumnLayout {
            spacing: Theme.gapTiny
            Layout.fillWidth: true

            AboutText {
                text: Catalogue.translated("Privacy")
                font: Theme.bodyEmphasis
                color: Theme.text
                Accessible.role: Accessible.Heading
            }
            AboutText {
                text: root.model.privacy
            }
        }
        ColumnLayout {
            spacing: Theme.gapTiny
            Layout.fillWidth: true

            AboutText {
                text: Catalogue.translated("Updates")
                font: Theme.bodyEmphasis
                color: Theme.text
                Accessible.role: Accessible.Heading
            }
            AboutText {
                text: root.model.updates
            }
        }
    }

    component AboutText: Text {
        font: Theme.secondary
        color: Theme.textSecondary
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignLeft
        Accessible.role: Accessible.StaticText
        Accessible.name: text
        Layout.fillWidth: true
    }

    PushButton {
        text: Catalogue.translated("Close")
        isDefault: true
        focus: true
        onClicked: root.close()
    }
}
