import QtQuick
import Brindle.Theme

// The days named below a chart, as many of them as there is room for.
Item {
    id: root

    // Of rows with place, weekday and date.
    required property QtObject marks
    required property int dayCount

    readonly property bool isMirrored: root.LayoutMirroring.enabled
    readonly property real dayWidth: root.dayCount > 0 ? root.width / root.dayCount : 0
    readonly property real widest: {
        let widest = 1;
        for (let i = 0; i < repeater.count; ++i)
            widest = Math.max(widest, repeater.itemAt(i)?.implicitWidth ?? 0);
        return widest;
    }
    // From one mark to the next.
    readonly property real spacing: repeater.count > 1 ? root.dayWidth * (repeater.itemAt(1)?.place - repeater.itemAt(0)?.place) : root.width
    readonly property int stride: root.spacing > 0 ? Math.max(1, Math.ceil((root.widest + Theme.gapSmall) / root.spacing)) : 1

    implicitHeight: repeater.count > 0 ? repeater.itemAt(0)?.implicitHeight ?? 0 : 0

    Repeater {
        id: repeater

        model: root.marks

        Text {
            id: mark

            required property int index
            required property int place
            required property string weekday
            required property string date
            readonly property real middle: (mark.place + 0.5) * root.dayWidth
            readonly property real begin: Math.max(0, Math.min(mark.middle - mark.implicitWidth / 2, root.width - mark.implicitWidth))

            x: root.isMirrored ? root.width - mark.begin - mark.implicitWidth : mark.begin
            visible: mark.index % root.stride === 0
            text: mark.weekday === "" ? mark.date : mark.weekday + "\n" + mark.date
            font: Theme.caption
            color: Theme.textSecondary
            horizontalAlignment: Text.AlignHCenter
            Accessible.ignored: true
        }
    }
}
