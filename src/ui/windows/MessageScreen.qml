import QtQuick
import QtQuick.Layouts
import Brindle.Marks
import Brindle.Theme

// A screen that takes the place of the pages: what is the matter, and what can be done.
Item {
    id: root

    property string title
    property list<string> paragraphs
    default property alias actions: actions.data

    ColumnLayout {
        spacing: Theme.gap
        width: Math.min(parent.width - 2 * Theme.margin, Theme.scaled(Theme.readingWidth))
        anchors.centerIn: parent

        CapacityIllustration {
            Layout.alignment: Qt.AlignHCenter
            Layout.bottomMargin: Theme.gapSmall
        }
        Text {
            text: root.title
            font: Theme.pageTitle
            color: Theme.text
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            Layout.fillWidth: true
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        Repeater {
            model: root.paragraphs

            Text {
                required property string modelData

                text: modelData
                font: Theme.body
                color: Theme.textSecondary
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.Wrap
                Layout.fillWidth: true
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }
        Flow {
            id: actions
            spacing: Theme.gapSmall
            Layout.alignment: Qt.AlignHCenter
            Layout.topMargin: Theme.gapSmall
            Layout.maximumWidth: parent.width
        }
    }
}
