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

    readonly property var paths: ({
            "chevron-left": "M10 3 L5 8 L10 13",
            "chevron-right": "M6 3 L11 8 L6 13",
            "chevron-down": "M3 6 L8 11 L13 6",
            "search": "M11.50 7.00 L11.28 8.39 L10.64 9.65 L9.65 10.64 L8.39 11.28 L7.00 11.50 L5.61 11.28 L4.35 10.64 L3.36 9.65 L2.72 8.39 L2.50 7.00 L2.72 5.61 L3.36 4.35 L4.35 3.36 L5.61 2.72 L7.00 2.50 L8.39 2.72 L9.65 3.36 L10.64 4.35 L11.28 5.61 Z M10.2 10.2 L14 14",
            "close": "M4 4 L12 12 M12 4 L4 12",
            "folder": "M2 4 H6.5 L8 5.5 H14 V13 H2 Z",
            "file": "M4 2 H9.5 L12.5 5 V14 H4 Z M9.5 2 V5 H12.5",
            "drive": "M2 9 L4 3.5 H12 L14 9 V13 H2 Z M2 9 H14 M11 11 H11.5",
            "warning": "M8 2.5 L14.5 13.5 H1.5 Z M8 6.5 V9.5 M8 11.5 V11.6",
            "pin": "M5.5 2 H10.5 M6.5 2 V6.5 L4.5 9 H11.5 L9.5 6.5 V2 M8 9 V14",
            "arrow-up": "M8 13.5 V3 M4 7 L8 3 L12 7",
            "arrow-down": "M8 2.5 V13 M4 9 L8 13 L12 9",
            "export": "M8 10 V2 M5 5 L8 2 L11 5 M3 9 V14 H13 V9",
            "clock": "M14.00 8.00 L13.80 9.55 L13.20 11.00 L12.24 12.24 L11.00 13.20 L9.55 13.80 L8.00 14.00 L6.45 13.80 L5.00 13.20 L3.76 12.24 L2.80 11.00 L2.20 9.55 L2.00 8.00 L2.20 6.45 L2.80 5.00 L3.76 3.76 L5.00 2.80 L6.45 2.20 L8.00 2.00 L9.55 2.20 L11.00 2.80 L12.24 3.76 L13.20 5.00 L13.80 6.45 Z M8 4.5 V8 L10.5 9.5",
            "check": "M3 8.5 L6.5 12 L13 4.5",
            "menu": "M2 4 H14 M2 8 H14 M2 12 H14"
        })

    implicitWidth: Theme.scaled(Theme.gap)
    implicitHeight: Theme.scaled(Theme.gap)
    path: root.paths[root.name] ?? ""
    grid: Qt.size(16, 16)
    outline: root.color
    fill: root.isFilled ? root.color : "transparent"
    lineWidth: 1.5
    isMirrored: root.LayoutMirroring.enabled && root.name.startsWith("chevron-")
    Accessible.ignored: true
}
