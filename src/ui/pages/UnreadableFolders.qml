import QtQuick
import QtQuick.Layouts
import Brindle.Parts
import Brindle.Theme

// The folders that the last check of a location could not read.
ColumnLayout {
    id: root

    required property QtObject folders
    required property string more

    spacing: Theme.gapTiny

    ListView {
        id: list

        Accessible.name: Catalogue.translated("Folders that couldn't be read")
        Accessible.role: Accessible.List
        Layout.fillWidth: true
        Layout.preferredHeight: Math.min(list.contentHeight, Theme.scaled(240))
        activeFocusOnTab: true
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        model: root.folders

        delegate: RowLayout {
            id: row

            required property string path
            required property string reason

            Accessible.name: row.path + ", " + row.reason
            Accessible.role: Accessible.ListItem
            spacing: Theme.gap
            width: ListView.view ? ListView.view.width : 0

            Text {
                Layout.fillWidth: true
                color: Theme.text
                font: Theme.secondary
                text: row.path
                horizontalAlignment: Text.AlignLeft
                wrapMode: Text.WrapAnywhere
            }
            Text {
                color: Theme.textSecondary
                font: Theme.secondary
                text: row.reason
                horizontalAlignment: Text.AlignLeft
            }
        }

        FocusRing {
            isShown: list.activeFocus
        }
    }
    Text {
        Layout.fillWidth: true
        color: Theme.textSecondary
        font: Theme.secondary
        text: root.more
        horizontalAlignment: Text.AlignLeft
        visible: text.length > 0
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
