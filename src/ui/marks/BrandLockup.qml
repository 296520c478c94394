import QtQuick
import Brindle.Marks
import Brindle.Theme

// The mark beside the program's name.
Row {
    id: root

    property real scaleFactor: 1

    spacing: Theme.gapSmall * root.scaleFactor
    Accessible.role: Accessible.StaticText
    Accessible.name: name.text

    BrandMark {
        anchors.verticalCenter: parent.verticalCenter
        size: Theme.scaled(Theme.gapLarge) * root.scaleFactor
    }
    Text {
        id: name

        anchors.verticalCenter: parent.verticalCenter
        text: "Brindle"
        color: Theme.text
        font.family: Theme.wordmark.family
        font.weight: Theme.wordmark.weight
        font.pixelSize: Math.round(Theme.wordmark.pixelSize * root.scaleFactor)
        Accessible.ignored: true
    }
}
