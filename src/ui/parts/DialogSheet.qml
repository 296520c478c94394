import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Brindle.Theme

// A question or a message in the window; what is behind it waits. Escape closes it. The button that is to have
// the keyboard says `focus: true`. `details` stands between the words and the buttons.
T.Dialog {
    id: root

    property string text: ""
    // Where the keyboard was, and is again afterwards.
    property Item before: null
    property bool wasSeenBefore: false
    default property alias buttons: buttonRow.data
    property alias details: detailColumn.data

    parent: T.Overlay.overlay
    anchors.centerIn: parent
    width: Math.min(Theme.scaled(480), parent ? parent.width - 2 * Theme.margin : 0)
    implicitHeight: column.implicitHeight + topPadding + bottomPadding
    padding: Theme.gapLarge
    modal: true
    focus: true
    closePolicy: T.Popup.CloseOnEscape
    onAboutToShow: {
        root.before = root.parent.Window.activeFocusItem;
        root.wasSeenBefore = (root.before as T.Control)?.visualFocus ?? false;
    }
    onClosed: root.before?.forceActiveFocus(root.wasSeenBefore ? Qt.TabFocusReason : Qt.PopupFocusReason)

    contentItem: ColumnLayout {
        id: column

        spacing: Theme.gap

        Text {
            Layout.fillWidth: true
            text: root.title
            font: Theme.section
            color: Theme.text
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignLeft
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        Text {
            Layout.fillWidth: true
            visible: text !== ""
            text: root.text
            font: Theme.body
            color: Theme.text
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignLeft
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        ColumnLayout {
            id: detailColumn

            Layout.fillWidth: true
            visible: children.length > 0
            spacing: Theme.gapSmall
        }
        Flow {
            id: buttonRow

            Layout.fillWidth: true
            layoutDirection: Qt.RightToLeft
            spacing: Theme.gapSmall
        }
    }
    background: Rectangle {
        color: Theme.surface
        border.color: Theme.controlLine
        border.width: Theme.borderWidth
        radius: Theme.radius
    }
    enter: Transition {
        NumberAnimation {
            property: "opacity"
            from: 0
            to: 1
            duration: Theme.motion
        }
    }

    // The overlay sets the opacity of what it is given.
    T.Overlay.modal: Item {
        Rectangle {
            anchors.fill: parent
            color: Theme.ground
            opacity: 0.7
        }
    }
}
