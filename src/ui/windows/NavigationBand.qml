import QtQuick
import QtQuick.Layouts
import Brindle.Marks
import Brindle.Models
import Brindle.Parts
import Brindle.Theme

// The way between the pages, and to the menu.
FocusScope {
    id: root

    required property WindowModel model
    required property Commands commands
    required property bool isNarrow

    function openMenu() {
        menu.popup(menuButton, root.LayoutMirroring.enabled ? 0 : menuButton.width - menu.width, menuButton.height);
    }

    implicitHeight: row.implicitHeight + 2 * Theme.gapSmall

    RowLayout {
        id: row
        spacing: Theme.gapSmall
        anchors {
            left: parent.left
            right: parent.right
            verticalCenter: parent.verticalCenter
            leftMargin: Theme.margin
            rightMargin: Theme.gapLarge
        }

        BrandMark {
            size: Theme.scaled(Theme.gapLarge)
            visible: root.isNarrow
        }
        BrandLockup {
            visible: !root.isNarrow
        }
        Item {
            implicitWidth: Theme.gapSmall
        }
        Repeater {
            model: root.model.hasPages ? root.model.pageTitles : []

            NavigationTab {
                required property string modelData
                required property int index

                text: modelData
                isCurrent: index === root.model.page
                onChosen: root.model.page = index
            }
        }
        Item {
            Layout.fillWidth: true
        }
        IconButton {
            id: menuButton
            symbol: "menu"
            text: Catalogue.translated("Menu")
            onClicked: root.openMenu()

            MainMenu {
                id: menu
                model: root.model
                commands: root.commands
            }
        }
    }
    Rectangle {
        height: Theme.borderWidth
        color: Theme.line
        anchors {
            left: parent.left
            right: parent.right
            bottom: parent.bottom
        }
    }
}
