import QtQuick
import QtQuick.Layouts
import Brindle.Parts
import Brindle.Theme

// A folder with how much of the change is in it, or a file with what happened to it.
ListRow {
    id: root

    required property int index
    required property bool isFolder
    required property bool isEstimated
    required property string name
    required property string description
    required property string path
    required property string verb
    required property string added
    required property string addedExact
    required property string freed
    required property string freedExact
    required property double addedShare
    required property double freedShare
    required property string spoken

    property bool isNarrow: false

    // The view counts on whole pixels where it has not made the rows.
    height: Math.ceil(implicitHeight)
    text: root.spoken
    focusPolicy: Qt.ClickFocus
    isSelected: ListView.isCurrentItem && ListView.view.activeFocus

    Symbol {
        name: root.isFolder ? "folder" : "file"
    }
    ColumnLayout {
        spacing: 0
        Layout.fillWidth: true

        Text {
            text: root.name
            font: Theme.body
            color: Theme.text
            elide: Text.ElideMiddle
            textFormat: Text.PlainText
            horizontalAlignment: Text.AlignLeft
            Layout.fillWidth: true
            Accessible.ignored: true

            HoverHandler {
                id: pointer
            }
            Loader {
                anchors.fill: parent
                active: pointer.hovered
                sourceComponent: Tooltip {
                    text: root.path
                    visible: true
                }
            }
        }
        Text {
            text: root.description
            font: Theme.caption
            color: Theme.textSecondary
            elide: Text.ElideMiddle
            textFormat: Text.PlainText
            horizontalAlignment: Text.AlignLeft
            Layout.fillWidth: true
            Accessible.ignored: true
        }
    }
    Item {
        Layout.preferredWidth: Theme.scaled(root.isNarrow ? 72 : 160)
        implicitHeight: word.implicitHeight

        ProportionBar {
            width: parent.width
            anchors.verticalCenter: parent.verticalCenter
            addedShare: root.addedShare
            freedShare: root.freedShare
            isEstimated: root.isEstimated
            visible: root.isFolder
        }
        Text {
            id: word

            width: parent.width
            text: root.verb
            font: Theme.secondary
            color: Theme.textSecondary
            elide: Text.ElideRight
            Accessible.ignored: true
        }
    }
    ByteAmount {
        amount: root.added
        exact: root.addedExact
        tone: root.isEstimated ? Figure.Estimated : Figure.Added
        Layout.preferredWidth: Theme.scaled(88)
        Accessible.ignored: true
    }
    ByteAmount {
        amount: root.freed
        exact: root.freedExact
        tone: Figure.Freed
        Layout.preferredWidth: Theme.scaled(88)
        Accessible.ignored: true
    }
    Symbol {
        name: "chevron-right"
        opacity: root.isFolder ? 1 : 0
    }
}
