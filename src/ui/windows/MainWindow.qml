import QtQuick
import QtQuick.Layouts
import QtQuick.Window
import Brindle.Models
import Brindle.Pages
import Brindle.Parts
import Brindle.Setup
import Brindle.Theme

// One page at a time under the navigation, above the status bar; what is to be said in between.
Window {
    id: root

    required property WindowModel model
    required property OverviewModel overview
    required property ActivityModel activity
    required property StorageHistoryModel storageHistory
    required property TrendsModel trends
    required property DrivesModel drives
    required property ExportModel exporter
    required property AboutModel about
    required property SetupModel setup
    required property StartupChoices startup

    readonly property int widthClass: width < 1100 ? 0 : width < 1440 ? 1 : 2

    minimumWidth: 960
    minimumHeight: 680
    width: 1180
    height: 820
    color: Theme.ground
    title: "Brindle"
    LayoutMirroring.enabled: Application.layoutDirection === Qt.RightToLeft
    LayoutMirroring.childrenInherit: true

    Commands {
        id: commands
        model: root.model
        onAboutRequested: aboutSheet.open()
        onCloseRequested: root.close()
        onMenuRequested: navigation.openMenu()
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        NavigationBand {
            id: navigation
            model: root.model
            commands: commands
            isNarrow: root.widthClass === 0
            visible: root.model.screen !== WindowModel.Starting
            Layout.fillWidth: true
        }
        Banner {
            text: Catalogue.translated("Example history — your files haven't been scanned.")
            visible: root.model.isExample
            Layout.fillWidth: true

            PushButton {
                text: Catalogue.translated("Show your history")
                visible: root.model.canShowOwnHistory
                onClicked: root.model.showOwnHistory()
            }
            PushButton {
                text: Catalogue.translated("Set up Brindle")
                visible: root.model.canShowOwnHistory
                onClicked: root.model.showSetup()
            }
        }
        Banner {
            text: root.model.note
            visible: root.model.note.length > 0
            Layout.fillWidth: true

            IconButton {
                symbol: "close"
                text: Catalogue.translated("Close this note")
                onClicked: root.model.dismissNote()
            }
        }
        ScreenSwitch {
            // The pages in the order of the navigation.
            screens: [overviewPage, activityPage, storageHistoryPage, trendsPage, drivesPage, unavailable, firstRun]
            wanted: root.model.screen === WindowModel.Pages ? screens[root.model.page] : root.model.screen === WindowModel.Unavailable ? unavailable : root.model.screen === WindowModel.FirstRun ? firstRun : null
            Layout.fillWidth: true
            Layout.fillHeight: true
        }
        StatusBar {
            model: root.model
            visible: root.model.hasPages
            Layout.fillWidth: true
        }
    }

    Component {
        id: overviewPage
        OverviewPage {
            model: root.overview
            widthClass: root.widthClass
        }
    }
    Component {
        id: activityPage
        ActivityPage {
            model: root.activity
            widthClass: root.widthClass
        }
    }
    Component {
        id: storageHistoryPage
        StorageHistoryPage {
            model: root.storageHistory
            widthClass: root.widthClass
        }
    }
    Component {
        id: trendsPage
        TrendsPage {
            model: root.trends
            widthClass: root.widthClass
        }
    }
    Component {
        id: drivesPage
        DrivesPage {
            model: root.drives
            widthClass: root.widthClass
        }
    }
    Component {
        id: unavailable
        UnavailableScreen {
            model: root.model
        }
    }
    Component {
        id: firstRun
        SetupView {
            model: root.setup
            startup: root.startup
            widthClass: root.widthClass
        }
    }

    ExportDialogs {
        model: root.exporter
    }
    LocationDialogs {
        model: root.drives.actions
    }
    AboutSheet {
        id: aboutSheet
        objectName: "about"
        model: root.about
    }
}
