import QtQuick
import Brindle.Models
import Brindle.Theme

// The sections. The keyboard comes to the shown one, and its arrows show another.
Rectangle {
    id: root

    required property SettingsModel model

    function show(index: int) {
        root.model.section = index;
        tabs.itemAt(root.model.section).forceActiveFocus(Qt.TabFocusReason);
    }

    implicitWidth: Theme.scaled(190)
    color: Theme.surface
    Accessible.role: Accessible.PageTabList
    Accessible.name: Catalogue.translated("Settings")

    Column {
        anchors.fill: parent
        anchors.margins: Theme.gap
        spacing: Theme.gapTiny

        Repeater {
            id: tabs

            model: root.model.sectionTitles

            SettingsTab {
                required property int index
                required property string modelData

                width: parent.width
                text: modelData
                symbol: root.model.sectionSymbols[index]
                isCurrent: root.model.section === index
                focus: isCurrent
                onClicked: root.model.section = index
                Keys.onUpPressed: root.show(index - 1)
                Keys.onDownPressed: root.show(index + 1)
            }
        }
    }
    Rectangle {
        anchors.right: parent.right
        width: Theme.borderWidth
        height: parent.height
        color: Theme.line
    }
}
