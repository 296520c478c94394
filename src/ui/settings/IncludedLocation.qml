import QtQuick
import QtQuick.Layouts
import Brindle.Models
import Brindle.Parts
import Brindle.Theme

// A location with its state, and what of it could not be read.
RowLayout {
    id: root

    required property CheckSettings model
    required property int index
    required property string name
    required property string path
    required property string status
    required property string unreadable
    required property bool isTroubled
    required property bool canShow

    spacing: Theme.gap
    Layout.fillWidth: true

    ColumnLayout {
        spacing: Theme.gapTiny
        Layout.fillWidth: true

        Text {
            text: root.name
            font: Theme.bodyEmphasis
            color: Theme.text
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignLeft
            Accessible.role: Accessible.StaticText
            Accessible.name: text
            Layout.fillWidth: true
        }
        SettingText {
            text: root.path
            wrapMode: Text.WrapAtWordBoundaryOrAnywhere
        }
        RowLayout {
            spacing: Theme.gapSmall
            Layout.fillWidth: true

            Symbol {
                name: root.isTroubled ? "warning" : "check"
                color: root.isTroubled ? Theme.warning : Theme.textSecondary
                Layout.alignment: Qt.AlignTop
            }
            SettingText {
                text: root.status
                color: root.isTroubled ? Theme.warning : Theme.text
            }
        }
        RowLayout {
            spacing: Theme.gapSmall
            visible: root.unreadable !== ""
            Layout.fillWidth: true

            Symbol {
                name: "warning"
                color: Theme.warning
                Layout.alignment: Qt.AlignTop
            }
            SettingText {
                text: root.unreadable
            }
        }
    }
    PushButton {
        text: Catalogue.translated("Show in Files")
        visible: root.canShow
        Accessible.name: text + ": " + root.name
        onClicked: root.model.showInFiles(root.index)
        Layout.alignment: Qt.AlignTop
    }
}
