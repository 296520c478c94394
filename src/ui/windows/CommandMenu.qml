import QtQuick
import QtQuick.Controls.Basic
import Brindle.Theme

// A menu in the theme's colours, as wide as its longest command.
Menu {
    id: root

    function widest(): real {
        let width = 0;
        for (let i = 0; i < count; ++i)
            width = Math.max(width, itemAt(i).implicitWidth);
        return width;
    }

    padding: Theme.gapTiny
    margins: Theme.gapSmall
    modal: true
    dim: false
    onAboutToShow: contentItem.implicitWidth = widest()

    delegate: CommandMenuItem {
    }
    background: Rectangle {
        color: Theme.raised
        radius: Theme.radius
        border.color: Theme.line
        border.width: Theme.borderWidth
    }
}
