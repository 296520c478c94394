import QtQuick
import QtQuick.Layouts
import Brindle.Models
import Brindle.Parts
import Brindle.Theme

// The mounted drives that are not included, each with the button that includes it or with what speaks against it.
Flickable {
    id: root

    required property LocationActionsModel model
    readonly property alias count: rows.count

    // What the keyboard comes to is in sight.
    function reveal(row: Item) {
        const least = Math.min(row.y, row.y + row.height + 2 * Theme.focusWidth - root.height);
        root.contentY = Math.max(least, Math.min(root.contentY, row.y));
    }

    Accessible.name: Catalogue.translated("Drives")
    Accessible.role: Accessible.List
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    contentHeight: column.implicitHeight + 2 * Theme.focusWidth
    implicitHeight: Math.min(contentHeight, Theme.scaled(280))

    ColumnLayout {
        id: column

        spacing: Theme.gap
        width: root.width - 2 * Theme.focusWidth
        x: Theme.focusWidth
        y: Theme.focusWidth

        Repeater {
            id: rows

            model: root.model.drives

            RowLayout {
                id: row

                required property int index
                required property string name
                required property string mountPath
                required property string size
                required property string reason
                required property string spoken
                required property string action

                Accessible.name: row.spoken
                Accessible.role: Accessible.ListItem
                Layout.fillWidth: true
                spacing: Theme.gap

                Symbol {
                    name: "drive"
                }
                ColumnLayout {
                    Layout.fillWidth: true
                    spacing: Theme.gapTiny

                    Text {
                        Accessible.ignored: true
                        Layout.fillWidth: true
                        color: Theme.text
                        font: Theme.bodyEmphasis
                        horizontalAlignment: Text.AlignLeft
                        text: row.name
                        wrapMode: Text.Wrap
                    }
                    Text {
                        Accessible.ignored: true
                        Layout.fillWidth: true
                        color: Theme.textSecondary
                        font: Theme.secondary
                        horizontalAlignment: Text.AlignLeft
                        text: row.mountPath
                        wrapMode: Text.WrapAnywhere
                    }
                    Text {
                        Accessible.ignored: true
                        Layout.fillWidth: true
                        color: Theme.textSecondary
                        font: Theme.secondary
                        horizontalAlignment: Text.AlignLeft
                        text: row.reason
                        visible: text.length > 0
                        wrapMode: Text.Wrap
                    }
                }
                Text {
                    Accessible.ignored: true
                    color: Theme.text
                    font: Theme.body
                    text: row.size
                    visible: text.length > 0
                }
                PushButton {
                    Accessible.name: row.action
                    text: Catalogue.translated("Include")
                    visible: row.reason.length === 0

                    onActiveFocusChanged: if (activeFocus)
                        root.reveal(row)
                    onClicked: root.model.includeDrive(row.index)
                }
            }
        }
    }
}
