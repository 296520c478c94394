import QtQuick
import QtQuick.Templates as T
import Brindle.Theme

// One of many, in a list that opens. `label` is what the choice is about, for those who do not see where it is.
T.ComboBox {
    id: root

    required property var options
    property string label: ""
    property bool opensWithRelease: false

    signal chosen(int index)

    implicitWidth: Theme.scaled(160)
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    verticalPadding: Theme.gapSmall
    leftPadding: root.mirrored ? Theme.gapLarge + Theme.gapSmall : Theme.gap
    rightPadding: root.mirrored ? Theme.gap : Theme.gapLarge + Theme.gapSmall
    model: root.options
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    Accessible.name: root.label === "" ? root.displayText : root.label + ": " + root.displayText
    Accessible.onPressAction: root.popup.open()
    // A list that opened with the press would be closed by the release.
    Keys.onReturnPressed: event => event.accepted = root.opensWithRelease = !root.popup.visible
    Keys.onEnterPressed: event => event.accepted = root.opensWithRelease = !root.popup.visible
    Keys.onReleased: event => {
        event.accepted = root.opensWithRelease && (event.key === Qt.Key_Return || event.key === Qt.Key_Enter);
        if (!event.accepted)
            return;
        root.opensWithRelease = false;
        root.popup.open();
    }
    // Closes the list alone, also where it closes what is around it.
    Keys.onEscapePressed: event => {
        event.accepted = root.popup.visible;
        root.popup.close();
    }
    onActivated: index => root.chosen(index)

    contentItem: Text {
        text: root.displayText
        font: Theme.body
        color: Theme.text
        opacity: root.enabled ? 1 : 0.5
        elide: Text.ElideRight
        horizontalAlignment: Text.AlignLeft
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }
    indicator: Symbol {
        x: root.mirrored ? Theme.gapSmall : root.width - width - Theme.gapSmall
        y: (root.height - height) / 2
        name: "chevron-down"
        opacity: root.enabled ? 1 : 0.5
    }
    background: Rectangle {
        color: root.hovered || root.popup.visible ? Theme.raised : Theme.surface
        border.color: Theme.controlLine
        border.width: Theme.borderWidth
        opacity: root.enabled ? 1 : 0.5
        radius: Theme.radius

        FocusRing {
            isShown: root.visualFocus
        }
    }
    delegate: T.ItemDelegate {
        id: option

        required property int index
        required property string modelData

        width: ListView.view ? ListView.view.width : 0
        implicitHeight: implicitContentHeight + topPadding + bottomPadding
        padding: Theme.gapSmall
        text: option.modelData
        highlighted: option.index === root.highlightedIndex
        hoverEnabled: true
        Accessible.name: option.text

        contentItem: Text {
            text: option.text
            font: option.index === root.currentIndex ? Theme.bodyEmphasis : Theme.body
            color: Theme.text
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignLeft
        }
        background: Rectangle {
            color: option.highlighted ? Theme.selection : "transparent"
            radius: Theme.radius - Theme.gapTiny
        }
    }
    popup: T.Popup {
        y: root.height + Theme.gapTiny
        width: root.width
        implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
        margins: Theme.gapSmall
        padding: Theme.gapTiny

        contentItem: ListView {
            implicitHeight: Math.min(contentHeight, Theme.scaled(320))
            model: root.delegateModel
            currentIndex: root.highlightedIndex
            clip: true
        }
        background: Rectangle {
            color: Theme.raised
            border.color: Theme.controlLine
            border.width: Theme.borderWidth
            radius: Theme.radius
        }
    }

    HoverHandler {
        cursorShape: Qt.PointingHandCursor
    }
}
