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
        width: parent.width - 2 * Theme.margin
        anchors.centerIn: parent

        CapacityIllustration {
            // Where there is no room for both, what can be done is more important.
            visible: implicitHeight + message.implicitHeight + 2 * Theme.margin <= root.height
            Layout.alignment: Qt.AlignHCenter
            Layout.bottomMargin: Theme.gapSmall
        }
        ColumnLayout {
            id: message

            spacing: Theme.gap
            Layout.alignment: Qt.AlignHCenter
            Layout.fillWidth: true

            Text {
                text: root.title
                font: Theme.pageTitle
                color: Theme.text
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.Wrap
                Layout.alignment: Qt.AlignHCenter
                Layout.fillWidth: true
                Layout.maximumWidth: Theme.scaled(Theme.readingWidth)
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
                    Layout.alignment: Qt.AlignHCenter
                    Layout.fillWidth: true
                    Layout.maximumWidth: Theme.scaled(Theme.readingWidth)
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                }
            }
            Grid {
                id: actions

                readonly property real inARow: Array.from(visibleChildren).reduce((width, action) => width + action.implicitWidth + spacing, -spacing)

                columns: inARow <= root.width - 2 * Theme.margin ? Math.max(1, visibleChildren.length) : 1
                horizontalItemAlignment: Grid.AlignHCenter
                spacing: Theme.gapSmall
                Layout.alignment: Qt.AlignHCenter
                Layout.topMargin: Theme.gapSmall
            }
        }
    }
}
