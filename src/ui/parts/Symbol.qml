import QtQuick
import Brindle.Marks
import Brindle.Theme

// A small drawing in the colour of a text. What it says is said in words beside it, or by the control that it
// stands on. Those that point along the line point the other way where reading goes from right to left.
GridPath {
    id: root

    required property string name
    property color color: Theme.textSecondary
    property bool isFilled: false

    implicitWidth: Theme.scaled(Theme.gap)
    implicitHeight: Theme.scaled(Theme.gap)
    path: SymbolPaths.named[root.name] ?? ""
    grid: Qt.size(16, 16)
    outline: root.color
    fill: root.isFilled ? root.color : "transparent"
    lineWidth: 1.5
    isMirrored: root.LayoutMirroring.enabled && root.name.startsWith("chevron-")
    Accessible.ignored: true
}
