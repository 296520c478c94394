import QtQuick

// A frame that holds text and grows with it, so that columns keep their proportions in every text size. Both
// widths are those of the standard size; without `baseWidth` it is as wide as its content.
Item {
    id: root

    property real baseWidth: 0
    property real baseMinimumWidth: 0
    property int alignment: Qt.AlignLeft
    default property alias content: holder.data

    implicitWidth: Math.max(root.baseWidth > 0 ? Theme.scaled(root.baseWidth) : holder.implicitWidth, Theme.scaled(root.baseMinimumWidth))
    implicitHeight: holder.implicitHeight

    Row {
        id: holder

        anchors.left: root.alignment === Qt.AlignLeft ? root.left : undefined
        anchors.horizontalCenter: root.alignment === Qt.AlignHCenter ? root.horizontalCenter : undefined
        anchors.right: root.alignment === Qt.AlignRight ? root.right : undefined
    }
}
