import QtQuick
import Brindle.Marks
import Brindle.Theme

// The brand mark in a square.
Item {
    id: root

    property real size: Theme.scaled(Theme.gapLarge)

    implicitWidth: root.size
    implicitHeight: root.size

    Repeater {
        model: MarkPaths.brandMark

        GridPath {
            required property int index
            required property string modelData

            anchors.fill: parent
            path: modelData
            grid: MarkPaths.brandGrid
            fill: index === 0 ? Theme.accent : Theme.text
        }
    }
}
