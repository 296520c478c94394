import QtQuick
import Brindle.Models
import Brindle.Parts
import Brindle.Theme

// What the page covers; not there while there is nothing to choose from.
ChoiceBox {
    id: root

    required property ScopeModel scopes

    currentIndex: root.scopes.currentIndex
    implicitWidth: Theme.scaled(200)
    label: Catalogue.translated("Locations shown")
    options: root.scopes.options
    visible: root.scopes.hasChoice

    onChosen: index => root.scopes.choose(index)
}
