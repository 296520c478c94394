import QtQuick
import Brindle.Models
import Brindle.Parts
import Brindle.Theme

DialogSheet {
    id: root

    required property AboutModel model

    title: "Brindle"
    text: [root.model.productLine, root.model.version + "\n" + root.model.copyright, Catalogue.translated("Privacy") + "\n" + root.model.privacy.join(" "), Catalogue.translated("Updates") + "\n" + root.model.updates].join("\n\n")

    PushButton {
        text: Catalogue.translated("Close")
        isDefault: true
        onClicked: root.close()
    }
}
