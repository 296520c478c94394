import QtQuick
import QtQuick.Layouts

// Texts one below the other, deep within layouts. Where the height of wrapped texts comes up through more than two
// layouts, one within the other, they give up and leave the texts squeezed. In an item, a layout is one of its own.
Item {
    id: root

    default property alias content: column.data
    property alias spacing: column.spacing

    implicitHeight: column.implicitHeight
    implicitWidth: column.implicitWidth

    ColumnLayout {
        id: column

        spacing: 0
        width: root.width
    }
}
