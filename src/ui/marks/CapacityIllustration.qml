import QtQuick
import Brindle.Marks
import Brindle.Theme

// A drive as a glass box with what is on it in layers. It says nothing that the words beside it do not.
Item {
    id: root

    // By path: the box, its guides and brackets, the floor, the slab's side and top, its lights, and the layers
    // on it.
    readonly property list<QtObject> layers: [
        Layer {
            outline: Theme.controlLine
        },
        Layer {
            outline: Theme.line
        },
        Layer {
            outline: Theme.accent
        },
        Layer {
            fill: Theme.raised
            outline: Theme.line
        },
        Layer {
            fill: Theme.notVisibleTone
        },
        Layer {
            fill: Theme.surface
            outline: Theme.controlLine
        },
        Layer {
            outline: Theme.surface
        },
        Layer {
            fill: Theme.barTrack
            outline: Theme.controlLine
        },
        Layer {
            fill: Theme.accent
        },
        Layer {
            fill: Theme.surface
        }
    ]

    component Layer: QtObject {
        property color fill: "transparent"
        property color outline: "transparent"
    }

    implicitWidth: Theme.scaled(MarkPaths.capacityGrid.width)
    implicitHeight: Theme.scaled(MarkPaths.capacityGrid.height)
    Accessible.ignored: true

    Repeater {
        model: MarkPaths.capacityIllustration

        GridPath {
            required property int index
            required property string modelData
            readonly property var tones: root.layers[index]

            anchors.fill: parent
            path: modelData
            grid: MarkPaths.capacityGrid
            fill: tones.fill
            outline: tones.outline
            lineWidth: 1.5
        }
    }
}
