import QtQuick
import QtQuick.Layouts
import Brindle.Models
import Brindle.Parts
import Brindle.Theme

// The way to the folder that is listed, and what is in it.
GridLayout {
    id: root

    required property ExplorerModel explorer

    readonly property real widest: Theme.scaled(240)

    columns: width > Theme.scaled(800) ? 2 : 1
    columnSpacing: Theme.gap
    rowSpacing: Theme.gapTiny

    Flow {
        spacing: Theme.gapTiny
        Layout.fillWidth: true
        Accessible.role: Accessible.ToolBar
        Accessible.name: Catalogue.translated("The way to this folder")

        Repeater {
            model: root.explorer.crumbs

            Row {
                id: crumb

                required property int place
                required property string name
                required property bool isLast

                spacing: Theme.gapTiny

                LinkButton {
                    text: crumb.name
                    width: Math.min(implicitWidth, root.widest)
                    visible: !crumb.isLast
                    onClicked: root.explorer.openCrumb(crumb.place)
                }
                Symbol {
                    name: "chevron-right"
                    visible: !crumb.isLast
                    anchors.verticalCenter: parent.verticalCenter
                }
                Text {
                    text: crumb.name
                    font: Theme.bodyEmphasis
                    color: Theme.text
                    visible: crumb.isLast
                    width: Math.min(implicitWidth, 2 * root.widest)
                    wrapMode: Text.WrapAnywhere
                    topPadding: Theme.gapTiny
                    bottomPadding: Theme.gapTiny
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                }
            }
        }
    }
    Text {
        text: root.explorer.passingText.length > 0 ? root.explorer.passingText : root.explorer.insideText
        font: Theme.secondary
        color: Theme.textSecondary
        wrapMode: Text.Wrap
        Layout.fillWidth: root.columns === 1
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
