import QtQuick
import Brindle.Marks
import Brindle.Theme

// A drive as a glass box with what is on it in layers. It says nothing that the words beside it do not.
Item {
    id: root

    // By path: the box, its guides and brackets, the floor, the slab's side and top, its lights, and the layers
    // on it.
    readonly property var outlines: [Theme.controlLine, Theme.line, Theme.accent, Theme.line, "transparent", Theme.controlLine, Theme.surface, Theme.controlLine, "transparent", "transparent"]
    readonly property var fills: ["transparent", "transparent", "transparent", Theme.raised, Theme.notVisibleTone, Theme.surface, "transparent", Theme.barTrack, Theme.accent, Theme.surface]

    implicitWidth: Theme.scaled(MarkPaths.capacityGrid.width)
    implicitHeight: Theme.scaled(MarkPaths.capacityGrid.height)
    Accessible.ignored: true

    Repeater {
        model: MarkPaths.capacityIllustration

        GridPath {
            required property int index
            required property string modelData

            anchors.fill: parent
            path: modelData
            grid: MarkPaths.capacityGrid
            fill: root.fills[index]
            outline: root.outlines[index]
            lineWidth: 1.5
        }
    }
}
