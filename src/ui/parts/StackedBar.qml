import QtQuick
import Brindle.Theme

// Parts of a whole side by side: shares from 0 to 1, each in the colour of its place. What is left is empty.
Rectangle {
    id: root

    property var shares: []
    property var tones: []

    implicitWidth: Theme.scaled(240)
    implicitHeight: Theme.gap
    color: Theme.barTrack
    radius: Theme.gapTiny
    Accessible.ignored: true

    Row {
        anchors.left: parent.left
        height: parent.height

        Repeater {
            model: root.shares.length

            Item {
                id: part

                required property int index

                // What is there at all can be seen.
                width: root.shares[part.index] > 0 ? Math.max(Theme.gapTiny, root.shares[part.index] * root.width) : 0
                height: root.height

                Rectangle {
                    anchors.fill: parent
                    anchors.rightMargin: Theme.borderWidth
                    color: root.tones[part.index]
                    radius: root.radius
                }
            }
        }
    }
}
