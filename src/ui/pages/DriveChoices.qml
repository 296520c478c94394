import QtQuick
import QtQuick.Layouts
import Brindle.Models
import Brindle.Parts
import Brindle.Theme

// The mounted drives that are not included, each with the button that includes it or with what speaks against it.
ListView {
    id: root

    required property LocationActionsModel model

    Accessible.name: Catalogue.translated("Drives")
    Accessible.role: Accessible.List
    boundsBehavior: Flickable.StopAtBounds
    // All of them are there for the keyboard, also those that have to be scrolled to.
    cacheBuffer: Math.max(0, contentHeight)
    clip: true
    implicitHeight: Math.min(contentHeight, Theme.scaled(320))
    spacing: Theme.gapSmall

    delegate: RowLayout {
        id: row

        required property int index
        required property string name
        required property string mountPath
        required property string size
        required property string reason
        required property string action

        Accessible.name: [row.name, row.mountPath, row.size, row.reason].filter(part => part.length > 0).join(", ")
        Accessible.role: Accessible.ListItem
        spacing: Theme.gap
        width: ListView.view ? ListView.view.width : 0

        Symbol {
            Layout.alignment: Qt.AlignTop
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
                root.positionViewAtIndex(row.index, ListView.Contain)
            onClicked: root.model.includeDrive(row.index)
        }
    }
}
