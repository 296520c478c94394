import QtQuick
import QtQuick.Templates as T
import Brindle.Theme

// One of few, all of them in sight. The keyboard comes to the chosen one, and its arrows choose another.
Rectangle {
    id: root

    required property var options
    property int currentIndex: 0
    property string text: ""

    signal chosen(int index)

    function choose(index: int) {
        if (index < 0 || index >= root.options.length || index === root.currentIndex)
            return;
        // The keyboard goes ahead: the segment that it leaves stops being a place for it.
        if (segments.itemAt(root.currentIndex)?.activeFocus)
            segments.itemAt(index).forceActiveFocus(Qt.TabFocusReason);
        root.chosen(index);
        if (segments.itemAt(index).activeFocus)
            segments.itemAt(root.currentIndex)?.forceActiveFocus(Qt.TabFocusReason);
    }

    implicitWidth: row.implicitWidth + 2 * Theme.borderWidth
    implicitHeight: row.implicitHeight + 2 * Theme.borderWidth
    color: Theme.surface
    border.color: Theme.controlLine
    border.width: Theme.borderWidth
    radius: Theme.radius
    Accessible.role: Accessible.Grouping
    Accessible.name: root.text

    Row {
        id: row

        anchors.centerIn: parent

        Repeater {
            id: segments

            model: root.options

            T.RadioButton {
                id: segment

                required property int index
                required property string modelData
                readonly property bool isChosen: segment.index === root.currentIndex

                implicitWidth: implicitContentWidth + leftPadding + rightPadding
                implicitHeight: implicitContentHeight + topPadding + bottomPadding
                verticalPadding: Theme.gapSmall - Theme.borderWidth
                horizontalPadding: Theme.gap
                text: segment.modelData
                checked: segment.isChosen
                focusPolicy: segment.isChosen ? Qt.StrongFocus : Qt.ClickFocus
                hoverEnabled: true
                Accessible.name: segment.text
                Accessible.onPressAction: root.choose(segment.index)
                Keys.onLeftPressed: root.choose(segment.index + (segment.mirrored ? 1 : -1))
                Keys.onRightPressed: root.choose(segment.index + (segment.mirrored ? -1 : 1))
                onClicked: {
                    root.choose(segment.index);
                    // A click checks it, whatever becomes of the choice.
                    segment.checked = Qt.binding(() => segment.isChosen);
                }

                contentItem: Text {
                    text: segment.text
                    font: segment.isChosen ? Theme.bodyEmphasis : Theme.body
                    color: segment.isChosen ? Theme.onAccent : Theme.text
                    horizontalAlignment: Text.AlignHCenter
                    verticalAlignment: Text.AlignVCenter
                }
                background: Rectangle {
                    color: segment.isChosen ? Theme.accent : segment.hovered ? Theme.raised : "transparent"
                    radius: Theme.radius - Theme.borderWidth

                    FocusRing {
                        isShown: segment.visualFocus
                    }
                }
            }
        }
    }
    HoverHandler {
        cursorShape: Qt.PointingHandCursor
    }
}
