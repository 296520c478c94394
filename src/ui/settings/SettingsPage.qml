import QtQuick
import QtQuick.Layouts
import Brindle.Pages
import Brindle.Theme

// A section: its title above its cards, as wide as is good to read.
PageScroll {
    id: root

    required property string title
    default property alias cards: column.data

    widthClass: 0

    ColumnLayout {
        id: column

        spacing: Theme.gap
        Layout.fillWidth: true
        Layout.maximumWidth: Theme.scaled(640)

        Text {
            text: root.title
            font: Theme.pageTitle
            color: Theme.text
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignLeft
            Accessible.role: Accessible.Heading
            Accessible.name: text
            Layout.fillWidth: true
            Layout.bottomMargin: Theme.gapSmall
        }
    }
}
