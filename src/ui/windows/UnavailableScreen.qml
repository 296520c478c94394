import QtQuick
import Brindle.Models
import Brindle.Parts
import Brindle.Theme

MessageScreen {
    id: root

    required property WindowModel model

    title: Catalogue.translated("Your storage history couldn't be opened")
    paragraphs: [root.model.unavailableReason, Catalogue.translated("Nothing was changed or deleted. Your history is still in its folder.")]

    PushButton {
        text: Catalogue.translated("Try again")
        isDefault: true
        onClicked: root.model.retryOpening()
    }
    PushButton {
        text: Catalogue.translated("Show History Folder")
        onClicked: root.model.showHistoryFolder()
    }
    PushButton {
        text: Catalogue.translated("Explore example history")
        onClicked: root.model.showExample()
    }
}
