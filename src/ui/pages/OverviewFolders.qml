import QtQuick
import QtQuick.Layouts
import Brindle.Models
import Brindle.Parts
import Brindle.Theme

// The folders with the largest changes of the last seven days.
Card {
    id: root

    required property OverviewModel model

    padding: Theme.gapLarge

    SectionTitle {
        Layout.bottomMargin: Theme.gapSmall
        Layout.fillWidth: true
        text: Catalogue.translated("Largest contributors, last seven days")
    }
    Repeater {
        model: root.model.contributors

        ListRow {
            id: folder

            required property int index
            required property string place
            required property string added
            required property string freed
            required property double addedShare
            required property double freedShare

            Layout.fillWidth: true
            // Its words stand in line with the title.
            Layout.leftMargin: -Theme.gapSmall
            Layout.rightMargin: -Theme.gapSmall
            text: folder.place + ", " + folder.added + ", " + folder.freed

            onActivated: root.model.openFolder(folder.index)

            ColumnLayout {
                Layout.fillWidth: true
                spacing: Theme.gapTiny

                RowLayout {
                    Layout.fillWidth: true
                    spacing: Theme.gap

                    Text {
                        id: name

                        Accessible.ignored: true
                        Layout.fillWidth: true
                        color: Theme.text
                        elide: Text.ElideMiddle
                        font: Theme.body
                        text: folder.place
                        horizontalAlignment: Text.AlignLeft

                        HoverHandler {
                            id: pointer
                        }
                        Tooltip {
                            text: folder.place
                            visible: name.truncated && pointer.hovered
                        }
                    }
                    ByteAmount {
                        amount: folder.added
                        tone: Figure.Added
                        visible: folder.addedShare > 0
                    }
                    ByteAmount {
                        amount: folder.freed
                        tone: Figure.Freed
                        visible: folder.freedShare > 0
                    }
                }
                ProportionBar {
                    Layout.fillWidth: true
                    addedShare: folder.addedShare
                    freedShare: folder.freedShare
                }
            }
        }
    }
    Text {
        Layout.fillWidth: true
        color: Theme.textSecondary
        font: Theme.body
        text: root.model.contributorsSentence
        horizontalAlignment: Text.AlignLeft
        visible: text.length > 0
        wrapMode: Text.Wrap
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    Item {
        Layout.fillHeight: true
    }
}
