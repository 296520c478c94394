import QtQuick
import Brindle.Theme

// The lines of a chart's scale, with their amounts beside them at its beginning.
Item {
    id: root

    // Of rows with place, text and isZero.
    required property QtObject lines
    // What all amounts of the chart have room in.
    required property real labelRoom

    // Counts lines that came and went: a binding does not see it when others take the place of as many.
    property int exchanged: 0
    readonly property real labelWidth: {
        let widest = 0;
        for (let i = 0, seen = root.exchanged; i < repeater.count; ++i)
            widest = Math.max(widest, repeater.itemAt(i)?.labelWidth ?? 0);
        return Math.ceil(widest);
    }

    Repeater {
        id: repeater

        model: root.lines
        onItemAdded: ++root.exchanged
        onItemRemoved: ++root.exchanged

        Item {
            id: line

            required property real place
            required property string text
            required property bool isZero
            readonly property real labelWidth: label.implicitWidth

            width: root.width
            y: Math.round(root.height - line.place * root.height)

            Text {
                id: label

                anchors.left: parent.left
                anchors.verticalCenter: parent.top
                width: root.labelRoom
                text: line.text
                font: Theme.caption
                color: Theme.textSecondary
                horizontalAlignment: Text.AlignRight
                Accessible.ignored: true
            }
            Rectangle {
                anchors.left: label.right
                anchors.leftMargin: Theme.gapSmall
                anchors.right: parent.right
                height: Theme.borderWidth
                color: line.isZero ? Theme.controlLine : Theme.line
            }
        }
    }
}
