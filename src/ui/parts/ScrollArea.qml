import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Brindle.Theme

// A page that is higher than the window: its content stands in a column and says with Layout how wide it is. What
// the keyboard comes to is brought into sight; Page Up and Page Down reach what it does not come to.
Flickable {
    id: root

    default property alias content: column.data
    property alias spacing: column.spacing
    property int margin: Theme.margin

    readonly property Item focusedItem: Window.activeFocusItem

    function reveal(item: Item) {
        const top = item.mapToItem(column, 0, 0).y + column.y - Theme.gap;
        const bottom = top + item.height + 2 * Theme.gap;
        if (top < root.contentY)
            root.contentY = Math.max(0, top);
        else if (bottom > root.contentY + root.height)
            root.contentY = Math.min(Math.max(0, root.contentHeight - root.height), bottom - root.height);
    }
    function turnPage(direction: int) {
        const lowest = Math.max(0, root.contentHeight - root.height);
        root.contentY = Math.max(0, Math.min(root.contentY + direction * (root.height - Theme.margin), lowest));
    }
    function holds(item: Item): bool {
        let place = item;
        while (place !== null && place !== column)
            place = place.parent;
        return place === column;
    }

    clip: true
    boundsBehavior: Flickable.StopAtBounds
    contentWidth: width
    contentHeight: column.implicitHeight + 2 * Theme.gapLarge
    Keys.onPressed: event => {
        event.accepted = event.key === Qt.Key_PageDown || event.key === Qt.Key_PageUp;
        if (event.accepted)
            root.turnPage(event.key === Qt.Key_PageDown ? 1 : -1);
    }
    onFocusedItemChanged: {
        if (root.focusedItem !== null && root.holds(root.focusedItem))
            root.reveal(root.focusedItem);
    }

    T.ScrollBar.vertical: T.ScrollBar {
        id: bar

        x: root.LayoutMirroring.enabled ? 0 : root.width - width
        height: root.height
        padding: Theme.focusWidth
        minimumSize: 0.1
        visible: size < 1
        contentItem: Rectangle {
            implicitWidth: Theme.gapSmall - Theme.focusWidth
            radius: width / 2
            color: Theme.controlLine
            opacity: bar.hovered || bar.pressed ? 1 : 0.5
        }
    }

    ColumnLayout {
        id: column

        x: root.margin
        y: Theme.gapLarge
        width: root.width - 2 * root.margin
        spacing: Theme.gap
    }
}
