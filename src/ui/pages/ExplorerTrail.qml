import QtQuick
import Brindle.Models
import Brindle.Parts
import Brindle.Theme

// The way to the folder that is listed.
Flow {
    id: root

    required property ExplorerModel explorer

    readonly property real widest: Theme.scaled(240)

    spacing: Theme.gapTiny
    Accessible.role: Accessible.Grouping
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
                horizontalAlignment: Text.AlignLeft
                font: Theme.bodyEmphasis
                color: Theme.text
                visible: crumb.isLast
                width: Math.min(implicitWidth, root.width)
                wrapMode: Text.Wrap
                textFormat: Text.PlainText
                topPadding: Theme.gapTiny
                bottomPadding: Theme.gapTiny
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }
    }
}
