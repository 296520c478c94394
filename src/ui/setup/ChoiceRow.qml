import QtQuick
import QtQuick.Layouts
import Brindle.Parts
import Brindle.Theme

// A folder or drive with where it is, and the one thing that can be done with it, or why it cannot.
RowLayout {
    id: root

    required property string name
    required property string detail
    required property string obstacle
    required property bool isDrive
    property string actionText: ""

    signal acted

    spacing: Theme.gap

    Symbol {
        Layout.alignment: Qt.AlignTop
        Layout.topMargin: Theme.borderWidth
        name: root.isDrive ? "drive" : "folder"
    }
    ColumnLayout {
        Layout.fillWidth: true
        spacing: 0

        Text {
            Layout.fillWidth: true
            text: root.name
            font: Theme.bodyEmphasis
            color: Theme.text
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignLeft
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        Text {
            Layout.fillWidth: true
            text: root.detail
            font: Theme.secondary
            color: Theme.textSecondary
            wrapMode: Text.WrapAnywhere
            horizontalAlignment: Text.AlignLeft
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        Text {
            Layout.fillWidth: true
            visible: text !== ""
            text: root.obstacle
            font: Theme.secondary
            color: Theme.warning
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignLeft
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
    PushButton {
        visible: root.actionText !== ""
        text: root.actionText
        Accessible.name: root.actionText + ": " + root.name
        onClicked: root.acted()
    }
}
