import QtQuick
import QtQuick.Layouts
import Brindle.Parts
import Brindle.Theme

// A drive: how its used space divides up, when it will be full, and how its use moved lately.
Card {
    id: root

    required property string name
    required property string mountPath
    required property string available
    required property string used
    required property string usedExact
    required property string measured
    required property var spaceParts
    required property list<string> notes
    required property list<string> reconciliation

    readonly property bool isWide: root.width >= Theme.scaled(760)

    padding: Theme.gapLarge
    spacing: Theme.gap

    Item {
        Layout.fillWidth: true
        implicitHeight: heading.implicitHeight
        implicitWidth: heading.implicitWidth

        GridLayout {
            id: heading

            columnSpacing: Theme.gapLarge
            columns: root.isWide ? 2 : 1
            rowSpacing: Theme.gapSmall
            width: parent.width

            TextColumn {
                Layout.fillWidth: true
                spacing: Theme.gapTiny

                RowLayout {
                    Layout.fillWidth: true
                    spacing: Theme.gapSmall

                    Symbol {
                        name: "drive"
                    }
                    Text {
                        Layout.fillWidth: true
                        Accessible.role: Accessible.Heading
                        color: Theme.text
                        font: Theme.bodyEmphasis
                        text: root.name
                        horizontalAlignment: Text.AlignLeft
                        wrapMode: Text.Wrap
                    }
                }
                Text {
                    Layout.fillWidth: true
                    color: Theme.textSecondary
                    font: Theme.secondary
                    text: root.mountPath
                    horizontalAlignment: Text.AlignLeft
                    wrapMode: Text.WrapAnywhere
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                }
            }
            Figure {
                amount: root.used
                caption: Catalogue.translated("Used space at the last check")
                exact: root.usedExact
            }
        }
    }
    StackedBar {
        Layout.fillWidth: true
        shares: root.spaceParts.map(part => part.share)
        tones: root.spaceParts.map(part => legend.toneOf(part.part))
    }
    Flow {
        Layout.fillWidth: true
        spacing: Theme.gap

        Text {
            color: Theme.text
            font: Theme.secondary
            text: root.available
            horizontalAlignment: Text.AlignLeft
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        Text {
            color: Theme.textSecondary
            font: Theme.secondary
            text: root.measured
            horizontalAlignment: Text.AlignLeft
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
    DriveLegend {
        id: legend

        Layout.fillWidth: true
        columns: root.isWide ? 2 : 1
        spaceParts: root.spaceParts
    }
    Sentences {
        sentences: root.notes
    }
    Sentences {
        sentences: root.reconciliation
        title: Catalogue.translated("Last seven days")
    }

    component Sentences: TextColumn {
        id: group

        property string title: ""
        required property list<string> sentences

        Layout.fillWidth: true
        spacing: Theme.gapTiny
        visible: lines.count > 0

        Text {
            Layout.fillWidth: true
            color: Theme.textSecondary
            font: Theme.label
            text: group.title
            horizontalAlignment: Text.AlignLeft
            visible: text.length > 0
            wrapMode: Text.Wrap
        }
        Repeater {
            id: lines

            model: group.sentences

            Text {
                id: line

                required property string modelData

                Layout.fillWidth: true
                color: Theme.text
                font: Theme.body
                text: line.modelData
                horizontalAlignment: Text.AlignLeft
                wrapMode: Text.Wrap
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }
    }
}
