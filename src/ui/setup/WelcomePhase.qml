import QtQuick
import QtQuick.Layouts
import Brindle.Marks
import Brindle.Models
import Brindle.Parts
import Brindle.Theme

// What Brindle reads and never reads, before it reads anything.
GridLayout {
    id: root

    required property SetupModel model

    columns: root.width >= illustration.implicitWidth + Theme.scaled(400) ? 2 : 1
    columnSpacing: Theme.margin
    rowSpacing: Theme.gapLarge

    ColumnLayout {
        Layout.fillWidth: true
        spacing: Theme.gapLarge

        Promise {
            symbol: "check"
            title: Catalogue.translated("What Brindle reads")
            text: Catalogue.translated("Names, sizes, and dates of the files in the folders and drives that you choose.")
        }
        Promise {
            symbol: "close"
            title: Catalogue.translated("What it never reads")
            text: Catalogue.translated("What is in your files. Brindle opens none of them, and changes and deletes nothing.")
        }
        Promise {
            symbol: "drive"
            title: Catalogue.translated("Where it stays")
            text: root.model.staysHere
        }
    }
    CapacityIllustration {
        id: illustration
        Layout.alignment: Qt.AlignHCenter | Qt.AlignTop
    }

    component Promise: RowLayout {
        id: promise

        required property string symbol
        required property string title
        required property string text

        Layout.fillWidth: true
        spacing: Theme.gap

        Symbol {
            Layout.alignment: Qt.AlignTop
            Layout.topMargin: Theme.borderWidth
            name: promise.symbol
            color: Theme.accent
        }
        ColumnLayout {
            Layout.fillWidth: true
            spacing: Theme.gapTiny

            Text {
                Layout.fillWidth: true
                text: promise.title
                font: Theme.bodyEmphasis
                color: Theme.text
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignLeft
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }
            Text {
                Layout.fillWidth: true
                text: promise.text
                font: Theme.body
                color: Theme.textSecondary
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignLeft
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }
    }
}
