import QtQuick
import Brindle.Models
import Brindle.Parts
import Brindle.Theme

// Before anything was checked.
MessageScreen {
    id: root

    required property WindowModel model

    title: Catalogue.translated("A private, local statement of where your storage went.")
    paragraphs: [Catalogue.translated("Brindle records file sizes, dates, and paths. It never reads file contents."), Catalogue.translated("To begin, include a folder in a terminal: brindle include FOLDER")]

    PushButton {
        text: Catalogue.translated("Explore example history")
        isDefault: true
        onClicked: root.model.showExample()
    }
}
