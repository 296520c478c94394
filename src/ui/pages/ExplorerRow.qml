import QtQuick
import QtQuick.Layouts
import Brindle.Parts
import Brindle.Theme

// A folder with how much of the change is in it, or a file with what happened to it. Many are made at once, so
// that a row is made of as little as it can.
ListRow {
    id: root

    required property int index
    required property bool isFolder
    required property bool isEstimated
    required property string name
    required property string description
    required property string verb
    required property string added
    required property string freed
    required property double addedShare
    required property double freedShare
    required property string hint
    required property string spoken

    property bool isNarrow: false

    // The view counts on whole pixels where it has not made the rows.
    height: Math.ceil(implicitHeight)
    text: root.spoken
    focusPolicy: Qt.ClickFocus
    isSelected: ListView.isCurrentItem && ListView.view.activeFocus
    Accessible.description: root.hint

    Symbol {
        name: root.isFolder ? "folder" : "file"
    }
    Item {
        implicitHeight: nameText.implicitHeight + detailText.implicitHeight
        Layout.fillWidth: true

        Text {
            id: nameText

            width: parent.width
            text: root.name
            font: Theme.body
            color: Theme.text
            elide: Text.ElideMiddle
            textFormat: Text.PlainText
            horizontalAlignment: Text.AlignLeft
            Accessible.ignored: true
        }
        Text {
            id: detailText

            width: parent.width
            anchors.bottom: parent.bottom
            text: root.description
            font: Theme.caption
            color: Theme.textSecondary
            elide: Text.ElideMiddle
            textFormat: Text.PlainText
            horizontalAlignment: Text.AlignLeft
            Accessible.ignored: true
        }
    }
    Loader {
        active: root.isFolder
        visible: root.isFolder
        sourceComponent: ProportionBar {
            addedShare: root.addedShare
            freedShare: root.freedShare
            isEstimated: root.isEstimated
            isAnimated: false
        }
        Layout.preferredWidth: Theme.scaled(root.isNarrow ? 72 : 160)
    }
    Text {
        text: root.verb
        horizontalAlignment: Text.AlignLeft
        font: Theme.secondary
        color: Theme.textSecondary
        elide: Text.ElideRight
        visible: !root.isFolder
        Layout.preferredWidth: Theme.scaled(root.isNarrow ? 72 : 160)
        Accessible.ignored: true
    }
    AmountText {
        text: root.added
        color: root.isEstimated ? Theme.estimated : Theme.added
    }
    AmountText {
        text: root.freed
        color: Theme.freed
    }
    Symbol {
        name: "chevron-right"
        opacity: root.isFolder ? 1 : 0
    }
    Loader {
        visible: false
        active: root.hovered
        sourceComponent: Tooltip {
            parent: root
            text: root.hint
            visible: true
        }
    }

    component AmountText: Text {
        font: Theme.figureInline
        horizontalAlignment: Text.AlignRight
        Layout.preferredWidth: Theme.scaled(88)
        Accessible.ignored: true
    }
}
