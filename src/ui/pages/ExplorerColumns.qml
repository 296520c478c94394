import QtQuick
import QtQuick.Layouts
import Brindle.Models
import Brindle.Theme

// What the listed folder holds, and what the columns of the rows below are.
Item {
    id: root

    required property ExplorerModel explorer

    implicitHeight: row.implicitHeight + Theme.gapTiny

    RowLayout {
        id: row

        width: parent.width
        spacing: Theme.gapSmall

        Text {
            text: root.explorer.passingText.length > 0 ? root.explorer.passingText : root.explorer.insideText
            horizontalAlignment: Text.AlignLeft
            font: Theme.caption
            color: Theme.textSecondary
            wrapMode: Text.Wrap
            Layout.fillWidth: true
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        ColumnTitle {
            text: Catalogue.translated("Added")
        }
        ColumnTitle {
            text: Catalogue.translated("Freed")
        }
        // As wide as what ends a row.
        Item {
            implicitWidth: Theme.scaled(Theme.gap)
        }
    }
    Rectangle {
        height: Theme.borderWidth
        color: Theme.line
        anchors {
            left: parent.left
            right: parent.right
            bottom: parent.bottom
        }
    }

    component ColumnTitle: Text {
        font: Theme.caption
        color: Theme.textSecondary
        horizontalAlignment: Text.AlignRight
        elide: Text.ElideRight
        Layout.preferredWidth: Theme.scaled(88)
        Layout.alignment: Qt.AlignBottom
        Accessible.ignored: true
    }
}
