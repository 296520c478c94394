import QtQuick
import Brindle.Models
import Brindle.Parts
import Brindle.Theme

DialogSheet {
    id: root

    required property AboutModel model

    title: "Brindle"
    text: root.model.text

    PushButton {
        text: Catalogue.translated("Close")
        isDefault: true
        onClicked: root.close()
    }
}
