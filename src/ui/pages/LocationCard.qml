import QtQuick
import QtQuick.Layouts
import Brindle.Models
import Brindle.Parts
import Brindle.Theme

// A location: how it fares, how much it holds, and what can be done with it.
Card {
    id: root

    required property DrivesModel model
    required property int index
    required property string location
    required property string name
    required property string path
    required property string status
    required property string size
    required property string sizeExact
    required property string lastCheck
    required property string unreadable
    required property string driveName
    required property string cloudOnly
    required property bool isTroubled
    required property bool canShow
    required property bool canChooseAgain
    required property bool canStop
    required property bool canForget
    required property bool isOpen

    readonly property bool isWide: root.width >= Theme.scaled(760)

    padding: Theme.gapLarge

    Item {
        Layout.fillWidth: true
        implicitHeight: heading.implicitHeight
        implicitWidth: heading.implicitWidth

        GridLayout {
            id: heading

            columnSpacing: Theme.gapLarge
            columns: root.isWide ? 3 : 1
            rowSpacing: Theme.gapSmall
            width: parent.width

            TextColumn {
                Layout.fillWidth: true
                spacing: Theme.gapTiny

                RowLayout {
                    Layout.fillWidth: true
                    spacing: Theme.gapSmall

                    Symbol {
                        name: "folder"
                    }
                    Text {
                        Layout.fillWidth: true
                        Accessible.role: Accessible.Heading
                        color: Theme.text
                        font: Theme.bodyEmphasis
                        text: root.name
                        horizontalAlignment: Text.AlignLeft
                        wrapMode: Text.Wrap
                    }
                }
                Text {
                    Layout.fillWidth: true
                    color: Theme.textSecondary
                    font: Theme.secondary
                    text: root.path
                    horizontalAlignment: Text.AlignLeft
                    wrapMode: Text.WrapAnywhere
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                }
            }
            TextColumn {
                Layout.alignment: Qt.AlignTop
                Layout.fillWidth: !root.isWide
                Layout.preferredWidth: root.isWide ? Theme.scaled(240) : -1
                spacing: Theme.gapTiny

                RowLayout {
                    spacing: Theme.gapSmall

                    Symbol {
                        color: root.isTroubled ? Theme.warning : Theme.textSecondary
                        name: root.isTroubled ? "warning" : "check"
                    }
                    Text {
                        Layout.fillWidth: true
                        color: root.isTroubled ? Theme.warning : Theme.text
                        font: Theme.body
                        text: root.status
                        horizontalAlignment: Text.AlignLeft
                        wrapMode: Text.Wrap
                        Accessible.role: Accessible.StaticText
                        Accessible.name: text
                    }
                }
                Text {
                    Layout.fillWidth: true
                    color: Theme.textSecondary
                    font: Theme.secondary
                    text: root.lastCheck
                    horizontalAlignment: Text.AlignLeft
                    wrapMode: Text.Wrap
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                }
            }
            ByteAmount {
                Layout.alignment: Qt.AlignTop
                Layout.preferredWidth: root.isWide ? Theme.scaled(104) : -1
                amount: root.size
                exact: root.sizeExact
                visible: root.isWide || root.size.length > 0
            }
        }
    }
    Text {
        Layout.fillWidth: true
        color: Theme.textSecondary
        font: Theme.secondary
        text: root.cloudOnly
        horizontalAlignment: Text.AlignLeft
        visible: text.length > 0
        wrapMode: Text.Wrap
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    Flow {
        Layout.fillWidth: true
        Layout.topMargin: Theme.gapTiny
        spacing: Theme.gapSmall
        visible: root.canShow || root.canStop || root.canForget || root.unreadable.length > 0

        PushButton {
            Accessible.description: root.name
            text: Catalogue.translated("Show in Files")
            visible: root.canShow

            onClicked: root.model.showInFiles(root.index)
        }
        PushButton {
            Accessible.description: root.name
            text: Catalogue.translated("Choose Again…")
            visible: root.canChooseAgain

            onClicked: root.model.actions.chooseAgain(root.location)
        }
        PushButton {
            Accessible.description: root.name
            text: Catalogue.translated("Stop Tracking…")
            visible: root.canStop

            onClicked: root.model.actions.stopTracking(root.location)
        }
        PushButton {
            Accessible.description: root.name
            text: Catalogue.translated("Forget…")
            visible: root.canForget

            onClicked: root.model.actions.forget(root.location)
        }
        PushButton {
            Accessible.checkable: true
            Accessible.checked: root.isOpen
            Accessible.description: root.name
            text: root.unreadable
            visible: root.unreadable.length > 0

            onClicked: root.model.toggleUnreadable(root.index)
        }
    }
    Loader {
        Layout.fillWidth: true
        active: root.isOpen
        visible: root.isOpen

        sourceComponent: UnreadableFolders {
            folders: root.model.unreadable
            more: root.model.moreUnreadable
        }
    }
}
