import QtQuick
import QtQuick.Layouts
import Brindle.Theme

// A sentence or more on what is set.
Text {
    font: Theme.secondary
    color: Theme.textSecondary
    wrapMode: Text.Wrap
    horizontalAlignment: Text.AlignLeft
    visible: text !== ""
    Accessible.role: Accessible.StaticText
    Accessible.name: text
    Layout.fillWidth: true
}
