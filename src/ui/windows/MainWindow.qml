import QtQuick
import QtQuick.Window
import Brindle.Models
import Brindle.Theme

Window {
    id: root

    required property WindowModel model

    minimumWidth: 960
    minimumHeight: 680
    title: "Brindle"
    visible: true

    Text {
        text: Catalogue.translated("Overview") + root.model.locationCount
    }
}
