import QtQuick
import Brindle.Charts
import Brindle.Theme

// Days as bars of what came, above a zero line, and what went, below it, under the line of the tracked size. One
// of the days is read; the pointer and, one stop of the keyboard, Left and Right, Home and End choose it. Enter
// opens it.
FocusScope {
    id: root

    objectName: "barChart"

    // Of rows with state, addedLength, freedLength and reading.
    required property QtObject days
    // Their number, which is told once all of them are there: every bar is as wide as it says.
    required property int dayCount
    required property QtObject marks
    required property QtObject changeLines
    required property real zeroPlace
    required property QtObject sizeLines
    required property list<real> sizeShares
    required property int currentRow

    readonly property bool isMirrored: root.LayoutMirroring.enabled
    readonly property real labelRoom: Math.max(changeScale.labelWidth, sizeScale.labelWidth)
    readonly property real dayWidth: root.dayCount > 0 ? plot.width / root.dayCount : 0

    signal chosen(int row)
    signal activated(int row)

    function rowAt(x: real): int {
        return Math.floor((root.isMirrored ? plot.width - x : x) / root.dayWidth);
    }
    function dayBegin(row: int): real {
        return Math.round((root.isMirrored ? root.dayCount - row - 1 : row) * root.dayWidth);
    }
    function chooseNext(step: int) {
        root.chosen(root.currentRow + (root.isMirrored ? -step : step));
    }

    implicitHeight: sizeTitle.height + sizePlot.height + changeTitle.height + changePlot.height + dayMarks.height + 5 * Theme.gapSmall
    Accessible.role: Accessible.List
    Accessible.name: Catalogue.translated("Changes by day")
    Keys.onLeftPressed: root.chooseNext(-1)
    Keys.onRightPressed: root.chooseNext(1)
    Keys.onPressed: event => {
        if (event.key !== Qt.Key_Home && event.key !== Qt.Key_End)
            return;
        root.chosen(event.key === Qt.Key_Home ? 0 : root.dayCount - 1);
        event.accepted = true;
    }
    Keys.onReturnPressed: root.activated(root.currentRow)
    Keys.onEnterPressed: root.activated(root.currentRow)
    Keys.onSpacePressed: root.activated(root.currentRow)
    onCurrentRowChanged: {
        if (root.activeFocus)
            bars.itemAt(root.currentRow)?.forceActiveFocus();
    }

    Text {
        id: sizeTitle

        anchors.left: plot.left
        anchors.right: parent.right
        text: Catalogue.translated("Tracked size at the end of each day")
        font: Theme.caption
        color: Theme.textSecondary
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignLeft
    }
    Item {
        id: sizePlot

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: sizeTitle.bottom
        anchors.topMargin: Theme.gapSmall
        height: Theme.scaled(2 * Theme.margin)

        ScaleLines {
            id: sizeScale

            anchors.fill: parent
            lines: root.sizeLines
            labelRoom: root.labelRoom
        }
    }
    Text {
        id: changeTitle

        anchors.left: plot.left
        anchors.right: parent.right
        anchors.top: sizePlot.bottom
        anchors.topMargin: Theme.gap
        text: Catalogue.translated("Added and freed")
        font: Theme.caption
        color: Theme.textSecondary
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignLeft
    }
    Item {
        id: changePlot

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: changeTitle.bottom
        anchors.topMargin: Theme.gapSmall
        height: Theme.scaled(6 * Theme.margin)

        ScaleLines {
            id: changeScale

            anchors.fill: parent
            lines: root.changeLines
            labelRoom: root.labelRoom
        }
    }
    // What is drawn by day.
    Item {
        id: plot

        anchors.left: parent.left
        anchors.leftMargin: root.labelRoom + Theme.gapSmall
        anchors.right: parent.right
        anchors.top: sizePlot.top
        anchors.bottom: changePlot.bottom

        Rectangle {
            x: root.dayBegin(root.currentRow)
            width: Math.round(root.dayWidth)
            height: parent.height
            visible: root.currentRow >= 0
            color: Theme.selection
            opacity: 0.5
            radius: Theme.radius / 2
        }
        TrackedLine {
            width: parent.width
            height: sizePlot.height
            shares: root.sizeShares
            color: Theme.accent
            lineWidth: Theme.focusWidth
            isMirrored: root.isMirrored
        }
        Repeater {
            id: bars

            model: root.days

            Item {
                id: day

                required property int index
                required property string state
                required property real addedLength
                required property real freedLength
                required property string reading
                readonly property bool isCurrent: day.index === root.currentRow

                x: root.dayBegin(day.index)
                width: Math.round(root.dayWidth)
                height: plot.height
                // What has the keyboard cannot cease to be a stop of it.
                activeFocusOnTab: day.isCurrent || day.activeFocus
                Accessible.role: Accessible.ListItem
                Accessible.name: day.reading
                Accessible.focusable: true
                Accessible.onPressAction: root.activated(day.index)

                DayBar {
                    anchors.bottom: parent.bottom
                    anchors.horizontalCenter: parent.horizontalCenter
                    width: Math.max(Theme.focusWidth, Math.min(Theme.margin, Math.round(day.width * 0.7)))
                    height: changePlot.height
                    dayState: day.state
                    addedLength: day.addedLength
                    freedLength: day.freedLength
                    zeroPlace: 1 - root.zeroPlace
                }
            }
        }
        Rectangle {
            x: root.dayBegin(root.currentRow) - Theme.focusWidth
            y: -Theme.focusWidth
            width: Math.round(root.dayWidth) + 2 * Theme.focusWidth
            height: parent.height + 2 * Theme.focusWidth
            visible: root.activeFocus
            color: "transparent"
            border.color: Theme.focusRing
            border.width: Theme.focusWidth
            radius: Theme.radius / 2
        }
        MouseArea {
            id: pointer

            // Where it was last: it is told of anew when what lies under it is drawn again, and one that rests
            // does not take back what the keyboard has chosen.
            property real lastX: -1

            function follow(x: real) {
                if (x === pointer.lastX)
                    return;
                pointer.lastX = x;
                root.chosen(root.rowAt(x));
            }

            anchors.fill: parent
            hoverEnabled: true
            cursorShape: Qt.PointingHandCursor
            onEntered: pointer.follow(pointer.mouseX)
            onExited: pointer.lastX = -1
            onPositionChanged: mouse => pointer.follow(mouse.x)
            onClicked: mouse => root.activated(root.rowAt(mouse.x))
        }
    }
    DayMarks {
        id: dayMarks

        anchors.left: plot.left
        anchors.right: plot.right
        anchors.top: plot.bottom
        anchors.topMargin: Theme.gapSmall
        marks: root.marks
        dayCount: root.dayCount
    }
}
