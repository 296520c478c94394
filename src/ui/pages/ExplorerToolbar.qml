import QtQuick
import Brindle.Models
import Brindle.Parts
import Brindle.Theme

// What the explorer lists, and in which order.
Flow {
    id: root

    required property ExplorerModel explorer

    // The keyboard is done here and goes to the list.
    signal searched

    function focusSearch() {
        field.forceActiveFocus(Qt.ShortcutFocusReason);
        field.selectAll();
    }

    spacing: Theme.gapSmall

    SegmentedChoice {
        text: Catalogue.translated("List")
        options: root.explorer.modes
        currentIndex: root.explorer.mode
        onChosen: index => root.explorer.mode = index
    }
    SegmentedChoice {
        text: Catalogue.translated("Direction")
        options: root.explorer.directions
        currentIndex: root.explorer.direction
        onChosen: index => root.explorer.direction = index
    }
    ChoiceBox {
        label: Catalogue.translated("Order")
        options: root.explorer.sorts
        currentIndex: root.explorer.sort
        visible: root.explorer.isSortable
        onChosen: index => root.explorer.sort = index
    }
    SearchField {
        id: field

        text: root.explorer.search
        placeholder: Catalogue.translated("Search names")
        onEdited: text => root.explorer.search = text
        onAccepted: root.searched()
        Keys.onDownPressed: root.searched()

        Connections {
            target: root.explorer
            function onStateChanged() {
                if (field.text !== root.explorer.search)
                    field.text = root.explorer.search;
            }
        }
    }
}
