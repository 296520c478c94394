import QtQuick
import Brindle.Models
import Brindle.Parts
import Brindle.Theme

MessageScreen {
    id: root

    required property WindowModel model
    // Whether the user is asked if the damaged history is to be recovered.
    property bool isAsking: false

    title: root.isAsking ? Catalogue.translated("Recover what can be read?") : Catalogue.translated("Your storage history couldn't be opened")
    paragraphs: root.isAsking ? [Catalogue.translated("Everything that can be read is brought into a new history. What lay on damaged parts of the file is lost."), Catalogue.translated("The damaged file stays in your history's folder, under another name. Nothing is overwritten.")] : [root.model.unavailableReason, Catalogue.translated("Nothing was changed or deleted. Your history is still in its folder.")]

    PushButton {
        objectName: "cancelRecovery"
        visible: root.isAsking
        text: Catalogue.translated("Cancel")
        isDefault: true
        onClicked: root.isAsking = false
    }
    PushButton {
        objectName: "confirmRecovery"
        visible: root.isAsking
        text: Catalogue.translated("Recover")
        onClicked: root.model.recoverHistory()
    }
    PushButton {
        visible: !root.isAsking
        text: Catalogue.translated("Try again")
        isDefault: true
        onClicked: root.model.retryOpening()
    }
    PushButton {
        objectName: "recover"
        visible: !root.isAsking && root.model.canRecover
        text: Catalogue.translated("Recover…")
        onClicked: root.isAsking = true
    }
    PushButton {
        visible: !root.isAsking
        text: Catalogue.translated("Show History Folder")
        onClicked: root.model.showHistoryFolder()
    }
    PushButton {
        visible: !root.isAsking
        text: Catalogue.translated("Explore example history")
        onClicked: root.model.showExample()
    }
}
