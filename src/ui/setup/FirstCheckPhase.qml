import QtQuick
import QtQuick.Layouts
import Brindle.Models
import Brindle.Parts
import Brindle.Theme

// The first check: how far it is, or what kept it from its end, and what it is about.
ColumnLayout {
    id: root

    required property SetupModel model
    readonly property FirstCheckModel check: root.model.check

    spacing: Theme.gap

    Card {
        Layout.fillWidth: true
        visible: root.check.isRunning
        padding: Theme.gapLarge
        spacing: Theme.gapLarge

        Text {
            Layout.fillWidth: true
            text: root.check.activity
            font: Theme.bodyEmphasis
            color: Theme.text
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignLeft
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        GridLayout {
            id: figures

            readonly property real columnWidth: Theme.scaled(130)

            Layout.fillWidth: true
            columns: figures.width >= 4 * figures.columnWidth + 3 * Theme.gap ? 4 : 2
            columnSpacing: Theme.gap
            rowSpacing: Theme.gap

            Figure {
                Layout.preferredWidth: figures.columnWidth
                Layout.fillWidth: true
                caption: Catalogue.translated("Files seen")
                amount: root.check.files
            }
            Figure {
                Layout.preferredWidth: figures.columnWidth
                Layout.fillWidth: true
                caption: Catalogue.translated("Their size")
                amount: root.check.bytes
                exact: root.check.exactBytes
            }
            Figure {
                Layout.preferredWidth: figures.columnWidth
                Layout.fillWidth: true
                caption: Catalogue.translated("Files per second")
                amount: root.check.rate
            }
            Figure {
                Layout.preferredWidth: figures.columnWidth
                Layout.fillWidth: true
                caption: Catalogue.translated("Elapsed time")
                amount: root.check.time
            }
        }
    }
    Repeater {
        model: root.check.isRunning ? [] : root.check.obstacles

        RowLayout {
            id: obstacle

            required property string modelData

            Layout.fillWidth: true
            spacing: Theme.gap

            Symbol {
                Layout.alignment: Qt.AlignTop
                Layout.topMargin: Theme.borderWidth
                name: "warning"
                color: Theme.warning
            }
            Text {
                Layout.fillWidth: true
                text: obstacle.modelData
                font: Theme.body
                color: Theme.text
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignLeft
                Accessible.role: Accessible.AlertMessage
                Accessible.name: text
            }
        }
    }
    SectionTitle {
        Layout.fillWidth: true
        text: Catalogue.translated("Included")
    }
    Card {
        Layout.fillWidth: true
        spacing: Theme.gap

        Repeater {
            model: root.model.locations.chosen

            ChoiceRow {
                Layout.fillWidth: true
            }
        }
    }
    Text {
        Layout.fillWidth: true
        visible: root.check.isRunning
        text: Catalogue.translated("You can close the window meanwhile: the check goes on. When it is done, the Overview opens.")
        font: Theme.secondary
        color: Theme.textSecondary
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignLeft
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
