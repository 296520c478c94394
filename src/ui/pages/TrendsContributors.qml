import QtQuick
import QtQuick.Layouts
import Brindle.Models
import Brindle.Parts
import Brindle.Theme

// The folders that contributed most to the range; each leads to its changes.
ColumnLayout {
    id: root

    required property TrendsModel model

    readonly property int most: 10

    spacing: Theme.gapSmall

    SectionTitle {
        text: Catalogue.translated("Largest contributors")
        Layout.fillWidth: true
    }
    Text {
        visible: folders.count === 0
        text: Catalogue.translated("Here are the folders that changed most, once something has changed.")
        font: Theme.body
        color: Theme.textSecondary
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignLeft
        Layout.fillWidth: true
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    Repeater {
        id: folders

        model: root.model.contributors

        ListRow {
            id: row

            required property int index
            required property string place
            required property string added
            required property string freed
            required property real addedShare
            required property real freedShare

            visible: row.index < root.most
            text: row.place + ", " + row.added + ", " + row.freed
            Layout.fillWidth: true
            onActivated: root.model.showFolder(row.index)

            ColumnLayout {
                spacing: Theme.gapTiny
                Layout.fillWidth: true

                Text {
                    text: row.place
                    font: Theme.body
                    color: Theme.text
                    wrapMode: Text.Wrap
                    horizontalAlignment: Text.AlignLeft
                    Layout.fillWidth: true
                    Accessible.ignored: true
                }
                ProportionBar {
                    addedShare: row.addedShare
                    freedShare: row.freedShare
                    Layout.fillWidth: true
                }
                RowLayout {
                    spacing: Theme.gap
                    Layout.fillWidth: true

                    ByteAmount {
                        amount: row.added
                        tone: Figure.Added
                    }
                    ByteAmount {
                        amount: row.freed
                        tone: Figure.Freed
                    }
                }
            }
        }
    }
}
