import QtQuick
import QtQuick.Templates as T
import Brindle.Theme

// An amount with its caption. Its sign tells added from freed as its colour does.
Item {
    id: root

    enum Tone {
        Neutral,
        Added,
        Freed,
        Estimated
    }

    required property string caption
    required property string amount
    property string exact: ""
    property int tone: Figure.Neutral
    property bool isLarge: false
    property bool isClickable: false

    readonly property string spoken: root.caption + ": " + root.amount

    signal activated

    implicitWidth: Math.max(captionText.implicitWidth, amountText.implicitWidth)
    implicitHeight: texts.implicitHeight
    Accessible.role: Accessible.StaticText
    Accessible.name: root.spoken
    Accessible.description: root.exact
    Accessible.ignored: root.isClickable

    T.AbstractButton {
        id: button

        anchors.fill: parent
        anchors.margins: -Theme.gapSmall
        visible: root.isClickable
        hoverEnabled: true
        text: root.spoken
        Accessible.name: root.spoken
        Accessible.description: root.exact
        Accessible.onPressAction: root.activated()
        Keys.onReturnPressed: root.activated()
        Keys.onEnterPressed: root.activated()
        onClicked: root.activated()

        background: Rectangle {
            color: button.hovered || button.down ? Theme.raised : "transparent"
            radius: Theme.radius

            FocusRing {
                isShown: button.visualFocus
            }
        }
    }
    HoverHandler {
        id: pointer

        cursorShape: root.isClickable ? Qt.PointingHandCursor : Qt.ArrowCursor
    }
    Column {
        id: texts

        spacing: Theme.gapTiny

        Text {
            id: captionText

            width: root.width
            text: root.caption
            font: Theme.caption
            color: Theme.textSecondary
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignLeft
            Accessible.ignored: true
        }
        Text {
            id: amountText

            width: root.width
            text: root.amount
            horizontalAlignment: Text.AlignLeft
            font: root.isLarge ? Theme.figureLarge : Theme.figure
            color: [Theme.text, Theme.added, Theme.freed, Theme.estimated][root.tone]
            Accessible.ignored: true
        }
    }
    Tooltip {
        text: root.exact
        visible: root.exact !== "" && (pointer.hovered || button.visualFocus)
    }
}
