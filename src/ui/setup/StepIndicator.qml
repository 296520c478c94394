import QtQuick
import QtQuick.Layouts
import Brindle.Theme

// How far one is on a way of few steps.
RowLayout {
    id: root

    required property int step
    required property int count
    required property string text

    spacing: Theme.gapTiny
    Accessible.role: Accessible.StaticText
    Accessible.name: root.text

    Repeater {
        model: root.count

        Rectangle {
            required property int index

            implicitWidth: Theme.gapLarge
            implicitHeight: Theme.gapTiny
            color: index < root.step ? Theme.accent : Theme.barTrack
            radius: height / 2
        }
    }
    Text {
        Layout.fillWidth: true
        Layout.leftMargin: Theme.gapTiny
        text: root.text
        font: Theme.label
        color: Theme.textSecondary
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignLeft
        Accessible.ignored: true
    }
}
