import QtQuick
import QtQuick.Layouts
import Brindle.Models
import Brindle.Parts
import Brindle.Theme

// What the chart shows, as a table: a row a day. Enter opens the day's changes.
FocusScope {
    id: root

    objectName: "dayTable"

    required property TrendsModel model

    readonly property real amountWidth: Theme.scaled(96)
    readonly property real wordWidth: Theme.scaled(96)

    implicitHeight: header.height + Theme.gapSmall + list.height

    RowLayout {
        id: header

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: Theme.gapSmall
        anchors.rightMargin: Theme.gapSmall
        spacing: Theme.gapSmall

        Heading {
            text: Catalogue.translated("Day")
            horizontalAlignment: Text.AlignLeft
            Layout.fillWidth: true
        }
        Heading {
            text: Catalogue.translated("Added")
            Layout.preferredWidth: root.amountWidth
        }
        Heading {
            text: Catalogue.translated("Freed")
            Layout.preferredWidth: root.amountWidth
        }
        Heading {
            text: Catalogue.translated("Net change")
            Layout.preferredWidth: root.amountWidth
        }
        Heading {
            text: Catalogue.translated("Tracked size")
            Layout.preferredWidth: root.amountWidth
        }
        Heading {
            text: Catalogue.translated("State")
            horizontalAlignment: Text.AlignLeft
            Layout.leftMargin: Theme.gap
            Layout.preferredWidth: root.wordWidth
        }
    }
    ListView {
        id: list

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: header.bottom
        anchors.topMargin: Theme.gapSmall
        height: Math.min(contentHeight, Theme.scaled(12 * Theme.margin))
        clip: true
        focus: true
        activeFocusOnTab: true
        boundsBehavior: Flickable.StopAtBounds
        model: root.model.days
        currentIndex: root.model.currentRow
        Accessible.role: Accessible.Table
        Accessible.name: Catalogue.translated("Changes by day")
        Keys.onUpPressed: root.model.currentRow -= 1
        Keys.onDownPressed: root.model.currentRow += 1
        Keys.onReturnPressed: root.model.showDay(root.model.currentRow)
        Keys.onEnterPressed: root.model.showDay(root.model.currentRow)
        onCurrentIndexChanged: list.positionViewAtIndex(list.currentIndex, ListView.Contain)

        delegate: ListRow {
            id: row

            required property int index
            required property string label
            required property string word
            required property string state
            required property string added
            required property string freed
            required property string net
            required property string tracked
            required property string reading

            width: list.width
            text: row.reading
            isSelected: ListView.isCurrentItem
            focusPolicy: Qt.NoFocus
            onActivated: root.model.showDay(row.index)

            Cell {
                text: row.label
                color: Theme.text
                horizontalAlignment: Text.AlignLeft
                Layout.fillWidth: true
            }
            Cell {
                text: row.added
                color: row.state === "estimated" ? Theme.estimated : Theme.added
                Layout.preferredWidth: root.amountWidth
            }
            Cell {
                text: row.freed
                color: Theme.freed
                Layout.preferredWidth: root.amountWidth
            }
            Cell {
                text: row.net
                color: Theme.text
                Layout.preferredWidth: root.amountWidth
            }
            Cell {
                text: row.tracked
                color: Theme.textSecondary
                Layout.preferredWidth: root.amountWidth
            }
            Cell {
                text: row.word
                Layout.leftMargin: Theme.gap
                font: Theme.caption
                color: row.state === "partial" ? Theme.warning : Theme.textSecondary
                horizontalAlignment: Text.AlignLeft
                Layout.preferredWidth: root.wordWidth
            }
        }
    }
    FocusRing {
        anchors.fill: list
        isShown: list.activeFocus
    }

    component Heading: Text {
        font: Theme.caption
        color: Theme.textSecondary
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignRight
        Layout.alignment: Qt.AlignBottom
        Accessible.role: Accessible.ColumnHeader
        Accessible.name: text
    }
    component Cell: Text {
        font: Theme.figureInline
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignRight
        Accessible.ignored: true
    }
}
