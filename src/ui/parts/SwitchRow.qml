import QtQuick
import QtQuick.Templates as T
import Brindle.Theme

// Something that is on or off, with the switch at the end of its line and what it means below. The row shows
// `isOn`, also where the one who hears `toggled` leaves it as it was.
FocusScope {
    id: root

    required property string text
    property string explanation: ""
    property bool isOn: false
    property bool isEnabled: true

    signal toggled(bool isOn)

    implicitWidth: Math.min(control.implicitContentWidth, Theme.scaled(Theme.readingWidth)) + control.leftPadding + control.rightPadding
    implicitHeight: control.implicitContentHeight + control.topPadding + control.bottomPadding

    T.CheckBox {
        id: control

        readonly property real indicatorSpace: indicator.width + Theme.gap

        anchors.fill: parent
        verticalPadding: Theme.gapTiny
        leftPadding: control.mirrored ? control.indicatorSpace : 0
        rightPadding: control.mirrored ? 0 : control.indicatorSpace
        text: root.text
        checked: root.isOn
        enabled: root.isEnabled
        focus: true
        focusPolicy: Qt.StrongFocus
        hoverEnabled: true
        Accessible.name: root.text
        Accessible.description: root.explanation
        Accessible.onPressAction: root.toggled(!root.isOn)
        Accessible.onToggleAction: root.toggled(!root.isOn)
        Keys.onReturnPressed: root.toggled(!root.isOn)
        Keys.onEnterPressed: root.toggled(!root.isOn)
        onClicked: {
            root.toggled(!root.isOn);
            // A click checks it, whatever becomes of the switch.
            control.checked = Qt.binding(() => root.isOn);
        }

        contentItem: Column {
            spacing: Theme.gapTiny

            Text {
                id: label

                width: parent.width
                text: root.text
                font: Theme.body
                color: Theme.text
                opacity: root.isEnabled ? 1 : Theme.disabledOpacity
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignLeft
                Accessible.ignored: true
            }
            Text {
                width: parent.width
                visible: text !== ""
                text: root.explanation
                font: Theme.secondary
                color: Theme.textSecondary
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignLeft
                Accessible.ignored: true
            }
        }
        indicator: Rectangle {
            x: control.mirrored ? 0 : control.width - width
            y: control.topPadding + Math.round((label.implicitHeight / label.lineCount - height) / 2)
            width: Theme.scaled(36)
            height: Theme.scaled(20)
            color: root.isOn ? Theme.accent : control.hovered ? Theme.raised : Theme.surface
            border.color: root.isOn ? (control.hovered ? Theme.text : Theme.accent) : Theme.controlLine
            border.width: Theme.borderWidth
            opacity: root.isEnabled ? 1 : Theme.disabledOpacity
            radius: height / 2

            Rectangle {
                readonly property real edge: Theme.gapTiny - Theme.borderWidth

                x: root.isOn !== control.mirrored ? parent.width - width - edge : edge
                y: edge
                width: height
                height: parent.height - 2 * edge
                color: root.isOn ? Theme.onAccent : Theme.textSecondary
                radius: height / 2

                Behavior on x  {
                    NumberAnimation {
                        duration: Theme.motion
                    }
                }
            }
        }
        background: Item {
            FocusRing {
                anchors.margins: -Theme.gapTiny
                isShown: control.visualFocus
            }
        }

        HoverHandler {
            cursorShape: Qt.PointingHandCursor
        }
    }
}
