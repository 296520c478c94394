import QtQuick
import QtQuick.Layouts
import Brindle.Models
import Brindle.Parts
import Brindle.Theme

// How full the drives are.
Card {
    id: root

    required property OverviewModel model

    padding: Theme.gapLarge
    visible: drives.count > 0

    SectionTitle {
        Layout.bottomMargin: Theme.gapSmall
        Layout.fillWidth: true
        text: Catalogue.translated("Drives")
    }
    Repeater {
        id: drives

        model: root.model.drives

        ListRow {
            id: drive

            required property string name
            required property string used
            required property string available
            required property double share

            Layout.fillWidth: true
            Layout.leftMargin: -Theme.gapSmall
            Layout.rightMargin: -Theme.gapSmall
            text: drive.name + ", " + drive.used + ", " + drive.available

            onActivated: root.model.openDrives()

            ColumnLayout {
                Layout.fillWidth: true
                spacing: Theme.gapTiny

                Text {
                    Layout.fillWidth: true
                    color: Theme.text
                    font: Theme.body
                    text: drive.name
                    horizontalAlignment: Text.AlignLeft
                    wrapMode: Text.Wrap
                }
                StackedBar {
                    Layout.fillWidth: true
                    shares: [drive.share]
                    tones: [Theme.filesTone]
                }
                Flow {
                    Layout.fillWidth: true
                    spacing: Theme.gap

                    Text {
                        color: Theme.textSecondary
                        font: Theme.secondary
                        text: drive.used
                        horizontalAlignment: Text.AlignLeft
                    }
                    Text {
                        color: Theme.textSecondary
                        font: Theme.secondary
                        text: drive.available
                        horizontalAlignment: Text.AlignLeft
                    }
                }
            }
        }
    }
    Item {
        Layout.fillHeight: true
    }
}
