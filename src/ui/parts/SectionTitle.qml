import QtQuick
import Brindle.Theme

// What a group of things is called.
Text {
    font: Theme.section
    color: Theme.text
    wrapMode: Text.Wrap
    horizontalAlignment: Text.AlignLeft
    Accessible.role: Accessible.Heading
    Accessible.name: text
}
