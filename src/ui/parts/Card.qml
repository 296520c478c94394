import QtQuick
import QtQuick.Layouts
import Brindle.Theme

// A surface for what belongs together; its content stands in a column and says with Layout how wide it is.
Rectangle {
    id: root

    default property alias content: column.data
    property alias spacing: column.spacing
    property int padding: Theme.gap

    implicitWidth: column.implicitWidth + 2 * root.padding
    implicitHeight: column.implicitHeight + 2 * root.padding
    color: Theme.surface
    border.color: Theme.line
    border.width: Theme.borderWidth
    radius: Theme.radius

    ColumnLayout {
        id: column

        anchors.fill: parent
        anchors.margins: root.padding
        spacing: Theme.gapSmall
    }
}
