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
            "paintbrush": "M14 2 L6.6 7.2 L8.8 9.4 Z M5.7 8.4 L7.6 10.3 L7.4 11.9 L6.2 13.2 L4.6 13.8 L2 13.8 L2.9 12.7 L3.1 11 L4 9.2 Z",
            "power": "M11.47 4.46 L12.37 5.43 L13.01 6.58 L13.35 7.85 L13.37 9.16 L13.07 10.45 L12.48 11.62 L11.61 12.61 L10.54 13.37 L9.31 13.84 L8.00 14.00 L6.69 13.84 L5.46 13.37 L4.39 12.61 L3.52 11.62 L2.93 10.45 L2.63 9.16 L2.65 7.85 L2.99 6.58 L3.63 5.43 L4.53 4.46 M8 2 V8",
            "hand-raised": "M5.2 9.7 V3.6 M7.7 7.6 V2 M10.2 7.6 V2.7 M12.7 9.8 V4.8 M12.7 9.5 L12.3 11.8 L11 13.5 L9 14.2 L7 13.9 L5.2 12.6 L2.3 9 L2.6 8.1 L3.6 8.1 L5.2 9.7",
            "update": "M2.59 6.55 L3.00 5.49 L3.61 4.53 L4.40 3.71 L5.34 3.07 L6.39 2.64 L7.51 2.42 L8.65 2.44 L9.76 2.68 L10.80 3.15 L11.72 3.82 L12.49 4.66 L13.08 5.63 M13.4 2.4 V5.7 H10.1 M13.41 9.45 L13.00 10.51 L12.39 11.47 L11.60 12.29 L10.66 12.93 L9.61 13.36 L8.49 13.58 L7.35 13.56 L6.24 13.32 L5.20 12.85 L4.28 12.18 L3.51 11.34 L2.92 10.37 M2.6 13.6 V10.3 H5.9",
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
