import QtQuick
import QtQuick.Controls.Basic
import Brindle.Models
import Brindle.Theme

// What the user can do from anywhere in the window, with the shortcuts. The menu shows these same actions.
Item {
    id: root

    required property WindowModel model
    readonly property alias about: about
    readonly property alias settings: settings
    readonly property alias checkForUpdates: checkForUpdates
    readonly property alias quit: quit
    readonly property alias close: close
    readonly property alias checkNow: checkNow
    readonly property alias stopCheck: stopCheck
    readonly property alias pause: pause
    readonly property alias exportStatement: exportStatement
    readonly property alias search: search
    readonly property alias today: today
    readonly property alias previousDay: previousDay
    readonly property alias nextDay: nextDay
    readonly property alias history: history
    readonly property alias setup: setup
    readonly property alias mainWindow: mainWindow
    readonly property alias miniWindow: miniWindow

    signal aboutRequested
    signal closeRequested
    signal menuRequested

    Action {
        id: about
        text: Catalogue.translated("About Brindle")
        onTriggered: root.aboutRequested()
    }
    Action {
        id: settings
        text: Catalogue.translated("Settings…")
        shortcut: "Ctrl+,"
        onTriggered: root.model.showSettings()
    }
    Action {
        id: checkForUpdates
        text: Catalogue.translated("Check for Updates…")
        enabled: root.model.canCheckForUpdates
        onTriggered: root.model.checkForUpdates()
    }
    Action {
        id: quit
        text: Catalogue.translated("Quit Brindle")
        shortcut: "Ctrl+Q"
        onTriggered: root.model.quit()
    }
    Action {
        id: close
        text: Catalogue.translated("Close Window")
        shortcut: "Ctrl+W"
        onTriggered: root.closeRequested()
    }
    Action {
        id: checkNow
        text: root.model.checkNowTitle
        shortcut: "Ctrl+R"
        enabled: root.model.canCheckNow
        onTriggered: root.model.checkNow()
    }
    Action {
        id: stopCheck
        text: Catalogue.translated("Stop Check")
        shortcut: "Ctrl+."
        enabled: root.model.isChecking
        onTriggered: root.model.stopCheck()
    }
    Action {
        id: pause
        text: root.model.pauseTitle
        onTriggered: root.model.togglePause()
    }
    Action {
        id: exportStatement
        text: Catalogue.translated("Export Statement…")
        shortcut: "Ctrl+E"
        enabled: root.model.hasPages
        onTriggered: root.model.exportStatement()
    }
    Action {
        id: search
        text: Catalogue.translated("Search Activity")
        shortcut: "Ctrl+F"
        enabled: root.model.hasPages
        onTriggered: root.model.searchActivity()
    }
    Action {
        id: today
        text: Catalogue.translated("Today")
        shortcut: "Alt+Home"
        enabled: root.model.hasPages
        onTriggered: root.model.showToday()
    }
    Action {
        id: previousDay
        text: Catalogue.translated("Previous Day")
        shortcut: "Alt+Left"
        enabled: root.model.hasPages
        onTriggered: root.model.moveDay(-1)
    }
    Action {
        id: nextDay
        text: Catalogue.translated("Next Day")
        shortcut: "Alt+Right"
        enabled: root.model.hasPages && root.model.hasNextDay
        onTriggered: root.model.moveDay(1)
    }
    Action {
        id: history
        text: root.model.isExample ? Catalogue.translated("Show Your History") : Catalogue.translated("Show Example History")
        enabled: !root.model.isExample || root.model.canShowOwnHistory
        onTriggered: root.model.isExample ? root.model.showOwnHistory() : root.model.showExample()
    }
    Action {
        id: setup
        text: Catalogue.translated("Set Up Brindle")
        enabled: root.model.canShowSetup
        onTriggered: root.model.showSetup()
    }
    Action {
        id: mainWindow
        text: Catalogue.translated("Brindle")
        shortcut: "Ctrl+0"
        onTriggered: root.model.openMainWindow()
    }
    Action {
        id: miniWindow
        text: root.model.miniWindowTitle
        shortcut: "Ctrl+Alt+M"
        onTriggered: root.model.toggleMiniWindow()
    }
    Repeater {
        model: root.model.pageTitles

        Item {
            id: page
            required property int index

            Shortcut {
                sequence: "Ctrl+" + (page.index + 1)
                enabled: root.model.hasPages
                onActivated: root.model.page = page.index
            }
        }
    }
    Shortcut {
        sequence: "F10"
        onActivated: root.menuRequested()
    }
}
