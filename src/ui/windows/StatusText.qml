import QtQuick
import QtQuick.Layouts
import Brindle.Theme

Text {
    font: Theme.caption
    color: Theme.textSecondary
    wrapMode: Text.Wrap
    Layout.minimumWidth: 0
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
