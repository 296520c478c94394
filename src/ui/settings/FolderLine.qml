import QtQuick
import QtQuick.Layouts
import Brindle.Parts
import Brindle.Theme

// A folder of Brindle's, what is in it or where it is, and the button that shows it.
RowLayout {
    id: root

    required property string text
    required property string explanation

    signal shown

    spacing: Theme.gap
    Layout.fillWidth: true

    ColumnLayout {
        spacing: Theme.gapTiny
        Layout.fillWidth: true

        Text {
            text: root.text
            font: Theme.body
            color: Theme.text
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignLeft
            Accessible.role: Accessible.StaticText
            Accessible.name: text
            Layout.fillWidth: true
        }
        SettingText {
            text: root.explanation
            wrapMode: Text.WrapAtWordBoundaryOrAnywhere
        }
    }
    PushButton {
        text: Catalogue.translated("Show in Files")
        Accessible.name: text + ": " + root.text
        onClicked: root.shown()
        Layout.alignment: Qt.AlignTop
    }
}
