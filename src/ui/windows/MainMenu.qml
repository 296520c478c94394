import QtQuick
import Brindle.Models
import Brindle.Theme

// Every command of the window, whatever the desktop does with menus.
CommandMenu {
    id: root

    required property WindowModel model
    required property Commands commands

    CommandMenuItem {
        action: root.commands.checkNow
    }
    CommandMenuItem {
        action: root.commands.stopCheck
    }
    CommandMenuItem {
        action: root.commands.pause
    }
    CommandMenuSeparator {
    }
    CommandMenuItem {
        action: root.commands.exportStatement
    }
    CommandMenuItem {
        action: root.commands.search
    }
    CommandMenuItem {
        action: root.commands.today
    }
    CommandMenuItem {
        action: root.commands.previousDay
    }
    CommandMenuItem {
        action: root.commands.nextDay
    }
    CommandMenu {
        id: pages
        title: Catalogue.translated("Go to")

        Repeater {
            model: root.model.pageTitles

            CommandMenuItem {
                required property string modelData
                required property int index
                text: modelData
                shortcutText: "Ctrl+" + (index + 1)
                enabled: root.model.hasPages
                onTriggered: root.model.page = index
            }
        }
    }
    CommandMenuSeparator {
    }
    CommandMenuItem {
        action: root.commands.history
    }
    CommandMenuItem {
        action: root.commands.setup
    }
    CommandMenuItem {
        action: root.commands.settings
    }
    CommandMenuItem {
        action: root.commands.checkForUpdates
    }
    CommandMenuItem {
        action: root.commands.about
    }
    CommandMenu {
        title: Catalogue.translated("Window")

        CommandMenuItem {
            action: root.commands.mainWindow
        }
        CommandMenuItem {
            action: root.commands.miniWindow
        }
        CommandMenuItem {
            action: root.commands.close
        }
    }
    CommandMenuSeparator {
    }
    CommandMenuItem {
        action: root.commands.quit
    }
}
