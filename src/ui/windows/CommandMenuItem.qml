import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Brindle.Theme
import Brindle.Parts

// A command with its shortcut, or another menu that opens beside it.
MenuItem {
    id: root

    property string shortcutText: action !== null && action.shortcut !== undefined ? action.shortcut : ""

    leftPadding: Theme.gap
    rightPadding: Theme.gap
    topPadding: Theme.gapTiny
    bottomPadding: Theme.gapTiny
    implicitWidth: leftPadding + content.implicitWidth + rightPadding
    implicitHeight: topPadding + content.implicitHeight + bottomPadding
    Accessible.onPressAction: root.triggered()

    arrow: null
    contentItem: RowLayout {
        id: content
        spacing: Theme.gapLarge

        Text {
            text: root.text
            horizontalAlignment: Text.AlignLeft
            font: Theme.body
            color: root.enabled ? Theme.text : Theme.textSecondary
            opacity: root.enabled ? 1 : Theme.disabledOpacity
            Accessible.ignored: true
            Layout.fillWidth: true
        }
        Text {
            // The key as keyboards name it.
            text: root.shortcutText.replace("Ctrl+", Catalogue.translated("Ctrl+"))
            horizontalAlignment: Text.AlignLeft
            visible: text.length > 0
            font: Theme.caption
            color: Theme.textSecondary
            opacity: root.enabled ? 1 : Theme.disabledOpacity
            Accessible.ignored: true
        }
        Symbol {
            name: root.mirrored ? "chevron-left" : "chevron-right"
            visible: root.subMenu !== null
        }
    }
    background: Rectangle {
        radius: Theme.radius
        color: root.highlighted ? Theme.selection : Theme.raised
    }
}
