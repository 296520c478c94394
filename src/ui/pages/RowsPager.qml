import QtQuick
import QtQuick.Layouts
import Brindle.Parts
import Brindle.Theme

// Which rows of a long list are shown, and the way to the others.
RowLayout {
    id: root

    required property string text
    required property bool hasPrevious
    required property bool hasNext

    signal turned(int pages)

    spacing: Theme.gapSmall

    Text {
        text: root.text
        horizontalAlignment: Text.AlignLeft
        font: Theme.secondary
        color: Theme.textSecondary
        wrapMode: Text.Wrap
        Layout.fillWidth: true
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    IconButton {
        symbol: "chevron-left"
        text: Catalogue.translated("Previous page")
        enabled: root.hasPrevious
        onClicked: root.turned(-1)
    }
    IconButton {
        symbol: "chevron-right"
        text: Catalogue.translated("Next page")
        enabled: root.hasNext
        onClicked: root.turned(1)
    }
}
