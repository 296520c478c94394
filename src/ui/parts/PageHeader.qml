import QtQuick
import QtQuick.Layouts
import Brindle.Theme

// The title of a page and what can be done with it, beside it where there is room.
GridLayout {
    id: root

    required property string title
    property string subtitle: ""
    default property alias actions: actionRow.data

    columns: texts.implicitWidth + columnSpacing + actionRow.implicitWidth <= width ? 2 : 1
    columnSpacing: Theme.gap
    rowSpacing: Theme.gapSmall

    ColumnLayout {
        id: texts

        Layout.fillWidth: true
        Layout.alignment: Qt.AlignVCenter
        spacing: Theme.gapTiny

        Text {
            Layout.fillWidth: true
            text: root.title
            font: Theme.pageTitle
            color: Theme.text
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignLeft
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        Text {
            Layout.fillWidth: true
            visible: text !== ""
            text: root.subtitle
            font: Theme.secondary
            color: Theme.textSecondary
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignLeft
        }
    }
    RowLayout {
        id: actionRow

        spacing: Theme.gapSmall
    }
}
