import QtQuick
import QtQuick.Layouts
import Brindle.Marks
import Brindle.Parts
import Brindle.Theme

// Every part once, as pages use them, under a name by which tests find it.
Rectangle {
    id: root

    property string heard: ""
    property bool isMirrored: false

    color: Theme.ground
    LayoutMirroring.enabled: root.isMirrored
    LayoutMirroring.childrenInherit: true

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: Theme.gapLarge
        spacing: Theme.gap

        Banner {
            Layout.fillWidth: true
            objectName: "banner"
            text: "Example history \u2014 your files haven't been scanned."
            isWarning: true

            LinkButton {
                objectName: "link"
                text: "Show your history"
                onClicked: root.heard = "link"
            }
            PushButton {
                objectName: "bannerButton"
                text: "Set up Brindle"
                onClicked: root.heard = "bannerButton"
            }
        }
        PageHeader {
            Layout.fillWidth: true
            title: "Storage history"
            subtitle: "March 2026"

            SegmentedChoice {
                objectName: "segments"
                text: "Range"
                options: ["Week", "Month", "Quarter"]
                onChosen: index => {
                    currentIndex = index;
                    root.heard = "segment " + index;
                }
            }
            PushButton {
                objectName: "default"
                text: "Export Statement\u2026"
                isDefault: true
                onClicked: root.heard = "default"
            }
        }
        Flow {
            Layout.fillWidth: true
            spacing: Theme.gapLarge

            Figure {
                objectName: "net"
                caption: "Net change"
                amount: "+11.11 GB"
                isLarge: true
            }
            Figure {
                objectName: "added"
                caption: "Added"
                amount: "+13.72 GB"
                exact: "13,724,181,504 bytes"
                tone: Figure.Added
                isClickable: true
                onActivated: root.heard = "added"
            }
            Figure {
                objectName: "freed"
                caption: "Freed"
                amount: "\u22122.61 GB"
                tone: Figure.Freed
            }
            Figure {
                objectName: "estimated"
                caption: "Estimated"
                amount: "+48.02 GB"
                tone: Figure.Estimated
            }
            BrandLockup {
            }
        }
        RowLayout {
            Layout.fillWidth: true
            Layout.fillHeight: true
            spacing: Theme.gap

            Card {
                Layout.fillWidth: true
                Layout.fillHeight: true
                Layout.preferredWidth: 2

                SectionTitle {
                    text: "Folders that contributed most"
                }
                SearchField {
                    Layout.fillWidth: true
                    objectName: "search"
                    placeholder: "Search names and paths"
                    onEdited: text => root.heard = "search " + text
                }
                Repeater {
                    model: ["Pictures", "Music and other sounds from the whole family", "Mail"]

                    ListRow {
                        id: row

                        required property string modelData
                        required property int index

                        Layout.fillWidth: true
                        objectName: "row" + index
                        text: modelData
                        isSelected: index === 1
                        onActivated: root.heard = "row " + index

                        Symbol {
                            name: ["folder", "drive", "file"][row.index]
                        }
                        Text {
                            Layout.fillWidth: true
                            text: row.modelData
                            font: Theme.body
                            color: Theme.text
                            wrapMode: Text.Wrap
                            Accessible.ignored: true
                        }
                        ProportionBar {
                            addedShare: 0.6 - 0.2 * row.index
                            freedShare: 0.15
                            isEstimated: row.index === 2
                        }
                        ScaledFrame {
                            baseWidth: 90
                            alignment: Qt.AlignRight

                            ByteAmount {
                                amount: ["+8.20 GB", "+511.3 MB", "\u221212.4 kB"][row.index]
                                tone: [Figure.Added, Figure.Added, Figure.Freed][row.index]
                            }
                        }
                    }
                }
                StackedBar {
                    Layout.fillWidth: true
                    shares: [0.42, 0.03, 0.18, 0.12]
                    tones: [Theme.filesTone, Theme.trashTone, Theme.notVisibleTone, Theme.otherVolumesTone]
                }
                Item {
                    Layout.fillHeight: true
                }
            }
            Card {
                Layout.fillWidth: true
                Layout.fillHeight: true
                Layout.preferredWidth: 1

                RowLayout {
                    IconButton {
                        objectName: "previous"
                        symbol: "chevron-left"
                        text: "Previous day"
                        onClicked: root.heard = "previous"
                    }
                    IconButton {
                        symbol: "chevron-right"
                        text: "Next day"
                    }
                    PushButton {
                        text: "Disabled"
                        enabled: false
                    }
                }
                ChoiceBox {
                    Layout.fillWidth: true
                    objectName: "choice"
                    label: "Sort"
                    options: ["Most changed", "Name", "Last change"]
                    onChosen: index => root.heard = "choice " + index
                }
                SwitchRow {
                    Layout.fillWidth: true
                    objectName: "switch"
                    text: "Check automatically"
                    explanation: "Also when the window is closed."
                    isOn: true
                    onToggled: on => {
                        isOn = on;
                        root.heard = "switch " + on;
                    }
                }
                SwitchRow {
                    Layout.fillWidth: true
                    objectName: "disabledSwitch"
                    text: "Open at login"
                    isEnabled: false
                    onToggled: root.heard = "disabledSwitch"
                }
                RowLayout {
                    spacing: Theme.borderWidth

                    Repeater {
                        model: 9

                        Rectangle {
                            required property int index

                            Layout.fillWidth: true
                            implicitHeight: Theme.scaled(Theme.margin)
                            color: Theme.netColor(index - 4)

                            Text {
                                anchors.centerIn: parent
                                text: parent.index - 4
                                font: Theme.caption
                                color: Theme.onNetColor(parent.index - 4)
                            }
                        }
                    }
                }
                Flow {
                    Layout.fillWidth: true
                    spacing: Theme.gapSmall

                    Repeater {
                        model: ["chevron-left", "chevron-right", "chevron-down", "search", "close", "folder", "file", "drive", "warning", "pin", "arrow-up", "arrow-down", "export", "clock", "check", "menu", "paintbrush", "power", "hand-raised", "update"]

                        Symbol {
                            required property string modelData

                            name: modelData
                        }
                    }
                }
                EmptyState {
                    Layout.fillWidth: true
                    objectName: "empty"
                    sentence: "What changed on this day will be here after the first check."
                    actionText: "Check Now"
                    onActed: root.heard = "empty"
                }
                CapacityIllustration {
                    Layout.alignment: Qt.AlignHCenter
                    Layout.fillHeight: true
                    Layout.preferredWidth: height
                    Layout.minimumHeight: 0
                }
            }
        }
    }
    DialogSheet {
        objectName: "dialog"
        title: "Stop tracking Pictures?"
        text: "Its history is kept. Checks leave it out from now on."

        PushButton {
            objectName: "cancel"
            text: "Cancel"
            isDefault: true
            focus: true
        }
        PushButton {
            text: "Stop Tracking"
        }
    }
}
