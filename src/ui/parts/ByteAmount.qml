import QtQuick
import Brindle.Theme

// An amount in a column of amounts.
Text {
    id: root

    required property string amount
    property string exact: ""
    property int tone: Figure.Neutral

    text: root.amount
    font: Theme.figureInline
    color: [Theme.text, Theme.added, Theme.freed, Theme.estimated][root.tone]
    horizontalAlignment: Text.AlignRight
    Accessible.role: Accessible.StaticText
    Accessible.name: root.amount
    Accessible.description: root.exact

    HoverHandler {
        id: pointer
    }
    // Made when it is wanted: a list has hundreds of amounts.
    Loader {
        anchors.fill: parent
        active: root.exact !== "" && pointer.hovered
        sourceComponent: Tooltip {
            text: root.exact
            visible: true
        }
    }
}
