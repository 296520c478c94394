import QtQuick
import QtQuick.Templates as T
import Brindle.Charts
import Brindle.Parts
import Brindle.Theme

// A day in the calendar of a month: coloured by its net change, hatched when it is estimated, empty without a
// check. Texts that do not fit are left away: they stand in the day's statement as well.
T.Button {
    id: root

    required property string number
    required property string dayState
    required property string word
    required property string net
    required property int step
    required property bool isToday
    required property string reading
    required property bool isSelected

    readonly property bool isRecorded: root.dayState === "recorded" || root.dayState === "partial"
    readonly property color ink: root.isRecorded ? Theme.onNetColor(root.step) : root.dayState === "estimated" ? Theme.text : Theme.textSecondary
    readonly property real room: root.width - 2 * Theme.gapSmall

    text: root.reading
    hoverEnabled: true
    focusPolicy: root.isSelected ? Qt.StrongFocus : Qt.ClickFocus
    Accessible.role: Accessible.Cell
    Accessible.name: root.reading
    Accessible.selectable: true
    Accessible.selected: root.isSelected
    Accessible.onPressAction: root.clicked()

    background: Rectangle {
        color: root.isRecorded ? Theme.netColor(root.step) : "transparent"
        border.color: root.isSelected ? Theme.text : root.dayState === "estimated" ? Theme.estimated : Theme.line
        border.width: root.isSelected ? Theme.focusWidth : root.isRecorded || root.dayState === "future" ? 0 : Theme.borderWidth
        radius: Theme.radius / 2

        HatchPattern {
            anchors.fill: parent
            anchors.margins: Theme.borderWidth
            visible: root.dayState === "estimated"
            color: Theme.estimated
            lineWidth: Theme.borderWidth
            spacing: Theme.gapSmall
            opacity: 0.4
        }
        CornerMark {
            anchors.right: parent.right
            anchors.top: parent.top
            anchors.margins: Theme.focusWidth
            width: Theme.scaled(Theme.gapSmall + Theme.focusWidth)
            height: width
            visible: root.dayState === "partial"
            color: Theme.onNetColor(root.step)
            isMirrored: root.mirrored
        }
        FocusRing {
            isShown: root.visualFocus
        }
    }
    contentItem: Item {
        Rectangle {
            anchors.centerIn: number
            width: Math.max(number.implicitWidth + Theme.gapSmall, height)
            height: number.implicitHeight
            visible: root.isToday
            color: Theme.accent
            radius: height / 2
        }
        Text {
            id: number

            anchors.left: parent.left
            anchors.top: parent.top
            anchors.leftMargin: Theme.gapSmall
            anchors.topMargin: Theme.gapTiny
            text: root.number
            font: root.isToday ? Theme.bodyEmphasis : Theme.body
            color: root.isToday ? Theme.onAccent : root.ink
            Accessible.ignored: true
        }
        Text {
            anchors.left: parent.left
            anchors.bottom: net.visible ? net.top : parent.bottom
            anchors.leftMargin: Theme.gapSmall
            anchors.bottomMargin: net.visible ? 0 : Theme.gapTiny
            visible: implicitWidth <= root.room && y >= number.y + number.height
            text: root.word
            font: Theme.caption
            color: root.ink
            Accessible.ignored: true
        }
        Text {
            id: net

            anchors.left: parent.left
            anchors.bottom: parent.bottom
            anchors.leftMargin: Theme.gapSmall
            anchors.bottomMargin: Theme.gapTiny
            visible: text !== "" && implicitWidth <= root.room
            text: root.net
            font: Theme.caption
            color: root.ink
            Accessible.ignored: true
        }
    }

    HoverHandler {
        cursorShape: root.dayState === "future" ? Qt.ArrowCursor : Qt.PointingHandCursor
    }
    Tooltip {
        text: root.reading
        visible: root.hovered
    }
}
