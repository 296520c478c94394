import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Brindle.Theme

// The content of a page in a column. What is longer than the window scrolls, also to where the keyboard goes.
Flickable {
    id: root

    required property int widthClass
    default property alias content: column.data
    readonly property int pageMargin: Theme.margin
    readonly property Item focused: root.Window.activeFocusItem

    // Page Up and Page Down reach what no button stands near.
    function scrollBy(distance: real) {
        root.contentY = Math.max(0, Math.min(root.contentY + distance, root.contentHeight - root.height));
    }

    boundsBehavior: Flickable.StopAtBounds
    clip: true
    contentHeight: column.implicitHeight + 2 * root.pageMargin
    contentWidth: root.width

    Keys.onPressed: event => {
        if (event.key !== Qt.Key_PageDown && event.key !== Qt.Key_PageUp)
            return;
        root.scrollBy((event.key === Qt.Key_PageDown ? 1 : -1) * (root.height - root.pageMargin));
        event.accepted = true;
    }
    onFocusedChanged: {
        let ancestor = root.focused;
        while (ancestor !== null && ancestor !== root.contentItem)
            ancestor = ancestor.parent;
        if (ancestor === null)
            return;
        const top = root.focused.mapToItem(root.contentItem, 0, 0).y - root.pageMargin;
        const bottom = top + root.focused.height + 2 * root.pageMargin;
        if (top < root.contentY)
            root.scrollBy(top - root.contentY);
        else if (bottom > root.contentY + root.height)
            root.scrollBy(Math.min(bottom - root.contentY - root.height, top - root.contentY));
    }

    T.ScrollBar.vertical: T.ScrollBar {
        id: bar

        implicitWidth: Theme.gapSmall
        padding: Theme.borderWidth
        visible: bar.size < 1

        contentItem: Rectangle {
            color: bar.hovered || bar.pressed ? Theme.textSecondary : Theme.controlLine
            radius: width / 2
        }
    }

    ColumnLayout {
        id: column

        spacing: Theme.gap
        width: root.width - 2 * root.pageMargin
        x: root.pageMargin
        y: root.pageMargin
    }
}
