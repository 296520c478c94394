import QtQuick
import QtQuick.Layouts
import Brindle.Theme

// One sentence on what will be here, and the one action that brings it.
ColumnLayout {
    id: root

    required property string sentence
    property string actionText: ""

    signal acted

    spacing: Theme.gap

    Text {
        Layout.fillWidth: true
        Layout.maximumWidth: Theme.scaled(480)
        Layout.alignment: Qt.AlignHCenter
        text: root.sentence
        font: Theme.body
        color: Theme.textSecondary
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    PushButton {
        Layout.alignment: Qt.AlignHCenter
        visible: root.actionText !== ""
        text: root.actionText
        onClicked: root.acted()
    }
}
