import QtQuick
import QtQuick.Layouts
import QtQuick.Window
import Brindle.Models
import Brindle.Parts
import Brindle.Theme

// One section at a time beside the list of them.
Window {
    id: root

    required property SettingsModel model
    required property WindowModel windowModel

    width: 800
    height: 600
    minimumWidth: Theme.scaled(680)
    minimumHeight: Theme.scaled(440)
    color: Theme.ground
    title: Catalogue.translated("Brindle Settings")
    LayoutMirroring.enabled: Application.layoutDirection === Qt.RightToLeft
    LayoutMirroring.childrenInherit: true
    onActiveChanged: {
        if (root.active)
            root.model.startup.refresh();
    }

    FocusScope {
        anchors.fill: parent
        focus: true
        Keys.onEscapePressed: root.close()

        ColumnLayout {
            anchors.fill: parent
            spacing: 0

            Banner {
                text: root.windowModel.note
                visible: root.windowModel.note.length > 0
                Layout.fillWidth: true

                IconButton {
                    symbol: "close"
                    text: Catalogue.translated("Close this note")
                    onClicked: root.windowModel.dismissNote()
                }
            }
            RowLayout {
                spacing: 0
                Layout.fillWidth: true
                Layout.fillHeight: true

                SettingsSidebar {
                    model: root.model
                    Layout.fillHeight: true
                }
                Loader {
                    sourceComponent: [appearance, checks, startup, privacy, updates][root.model.section]
                    Layout.fillWidth: true
                    Layout.fillHeight: true
                }
            }
        }
    }

    Component {
        id: appearance
        AppearanceSection {
            model: root.model
        }
    }
    Component {
        id: checks
        ChecksSection {
            model: root.model.checks
        }
    }
    Component {
        id: startup
        StartupSection {
            model: root.model.startup
        }
    }
    Component {
        id: privacy
        PrivacySection {
            model: root.model
        }
    }
    Component {
        id: updates
        UpdatesSection {
            model: root.model.updates
        }
    }

    Shortcut {
        sequence: "Ctrl+W"
        onActivated: root.close()
    }
    Shortcut {
        sequence: "Ctrl+Q"
        onActivated: root.windowModel.quit()
    }
}
