import QtQuick
import Brindle.Models
import Brindle.Theme

// The days of a month in their weeks. One stop of the keyboard: arrows move by day and week, Page Up and Down by
// month, Home and End to the ends of the week; Enter shows the day's changes.
FocusScope {
    id: root

    objectName: "monthGrid"

    required property StorageHistoryModel model

    readonly property bool isMirrored: root.LayoutMirroring.enabled
    readonly property real cellSpacing: Theme.gapTiny
    readonly property real cellWidth: (root.width + root.cellSpacing) / 7 - root.cellSpacing
    readonly property real cellHeight: Theme.scaled(2 * Theme.margin)

    function cellBegin(place: int): real {
        return Math.round((root.isMirrored ? 6 - place : place) * (root.cellWidth + root.cellSpacing));
    }
    function cellEnd(place: int): real {
        return Math.round((root.isMirrored ? 6 - place : place) * (root.cellWidth + root.cellSpacing) + root.cellWidth);
    }

    implicitHeight: weekdays.height + root.cellSpacing + root.model.weekCount * (root.cellHeight + root.cellSpacing)
    Accessible.role: Accessible.Table
    Accessible.name: root.model.month
    Keys.onLeftPressed: root.model.moveByDays(root.isMirrored ? 1 : -1)
    Keys.onRightPressed: root.model.moveByDays(root.isMirrored ? -1 : 1)
    Keys.onUpPressed: root.model.moveByDays(-7)
    Keys.onDownPressed: root.model.moveByDays(7)
    Keys.onReturnPressed: root.model.showChanges()
    Keys.onEnterPressed: root.model.showChanges()
    Keys.onPressed: event => {
        event.accepted = true;
        if (event.key === Qt.Key_PageUp)
            root.model.moveByMonths(-1);
        else if (event.key === Qt.Key_PageDown)
            root.model.moveByMonths(1);
        else if (event.key === Qt.Key_Home)
            root.model.moveToWeekStart();
        else if (event.key === Qt.Key_End)
            root.model.moveToWeekEnd();
        else
            event.accepted = false;
    }

    Connections {
        target: root.model
        function onChanged() {
            if (root.activeFocus)
                cells.itemAt(root.model.selectedRow)?.forceActiveFocus(Qt.TabFocusReason);
        }
    }

    Item {
        id: weekdays

        width: parent.width
        height: childrenRect.height

        Repeater {
            model: root.model.weekdayNames

            Text {
                required property int index
                required property string modelData

                x: root.cellBegin(index)
                width: root.cellWidth
                text: modelData
                font: Theme.caption
                color: Theme.textSecondary
                horizontalAlignment: Text.AlignHCenter
                elide: Text.ElideRight
                Accessible.role: Accessible.ColumnHeader
                Accessible.name: text
            }
        }
    }
    Repeater {
        id: cells

        model: root.model.days

        CalendarDay {
            required property int index
            required property int week
            required property int place
            required property string state

            x: root.cellBegin(place)
            y: weekdays.height + root.cellSpacing + week * (root.cellHeight + root.cellSpacing)
            width: root.cellEnd(place) - x
            height: root.cellHeight
            dayState: state
            isSelected: index === root.model.selectedRow
            onClicked: root.model.selectRow(index)
            onDoubleClicked: root.model.showChanges()
        }
    }
}
