import QtQuick
import QtQuick.Layouts
import Brindle.Theme

// A sentence that holds for the whole page or window, and what can be done about it.
Rectangle {
    id: root

    required property string text
    property bool isWarning: false
    default property alias actions: actionRow.data

    implicitWidth: line.implicitWidth + 2 * Theme.margin
    implicitHeight: line.implicitHeight + 2 * Theme.gapSmall
    color: Theme.raised
    Accessible.role: Accessible.AlertMessage
    Accessible.name: root.text

    RowLayout {
        id: line

        anchors.fill: parent
        anchors.leftMargin: Theme.margin
        anchors.rightMargin: Theme.margin
        anchors.topMargin: Theme.gapSmall
        anchors.bottomMargin: Theme.gapSmall
        spacing: Theme.gapSmall

        Symbol {
            visible: root.isWarning
            name: "warning"
            color: Theme.warning
        }
        Text {
            Layout.fillWidth: true
            text: root.text
            font: Theme.body
            color: Theme.text
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignLeft
            Accessible.ignored: true
        }
        RowLayout {
            id: actionRow

            spacing: Theme.gapSmall
        }
    }
}
