import QtQuick
import Brindle.Charts
import Brindle.Parts
import Brindle.Theme

// A day in the calendar of a month: coloured by its net change, hatched when it is estimated, empty without a
// check. Texts that do not fit are left away: they stand in the day's statement as well.
Item {
    id: root

    required property string number
    required property string dayState
    required property string word
    required property string net
    required property int step
    required property bool isToday
    required property string reading
    required property bool isSelected
    // Where the keyboard comes into the calendar.
    required property bool isStop

    readonly property bool isRecorded: root.dayState === "recorded" || root.dayState === "partial"
    readonly property color ink: root.isRecorded ? Theme.onNetColor(root.step) : root.dayState === "estimated" ? Theme.text : Theme.textSecondary
    readonly property real room: root.width - 2 * Theme.gapSmall

    readonly property alias isHovered: area.containsMouse

    signal clicked
    signal doubleClicked

    // What has the keyboard cannot cease to be a stop of it.
    activeFocusOnTab: root.isStop || root.activeFocus
    Accessible.role: Accessible.Cell
    Accessible.name: root.reading
    Accessible.focusable: true
    Accessible.selectable: true
    Accessible.selected: root.isSelected
    Accessible.onPressAction: root.clicked()

    Rectangle {
        anchors.fill: parent
        color: root.isRecorded ? Theme.netColor(root.step) : "transparent"
        border.color: root.isSelected ? Theme.text : root.dayState === "estimated" ? Theme.estimated : Theme.line
        border.width: root.isSelected ? Theme.focusWidth : root.isRecorded || root.dayState === "future" ? 0 : Theme.borderWidth
        radius: Theme.radius / 2

        Loader {
            anchors.fill: parent
            anchors.margins: Theme.borderWidth
            active: root.dayState === "estimated"

            sourceComponent: HatchPattern {
                color: Theme.estimated
                lineWidth: Theme.borderWidth
                spacing: Theme.gapSmall
                opacity: 0.4
            }
        }
        Loader {
            anchors.right: parent.right
            anchors.top: parent.top
            anchors.margins: Theme.focusWidth
            width: Theme.scaled(Theme.gapSmall + Theme.focusWidth)
            height: width
            active: root.dayState === "partial"

            sourceComponent: CornerMark {
                color: Theme.onNetColor(root.step)
                isMirrored: root.LayoutMirroring.enabled
            }
        }
        FocusRing {
            isShown: root.activeFocus
        }
    }
    Item {
        anchors.fill: parent

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
            horizontalAlignment: Text.AlignLeft
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
            horizontalAlignment: Text.AlignLeft
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
            horizontalAlignment: Text.AlignLeft
            font: Theme.caption
            color: root.ink
            Accessible.ignored: true
        }
    }

    MouseArea {
        id: area

        anchors.fill: parent
        hoverEnabled: true
        cursorShape: root.dayState === "future" ? Qt.ArrowCursor : Qt.PointingHandCursor
        onClicked: root.clicked()
        onDoubleClicked: root.doubleClicked()
    }
}
