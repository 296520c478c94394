import QtQuick
import QtQuick.Layouts
import Brindle.Parts
import Brindle.Theme

// What each part of a drive's bar is, with its amount.
GridLayout {
    id: root

    required property var spaceParts
    readonly property real columnWidth: (root.width - (root.columns - 1) * root.columnSpacing) / root.columns

    function toneOf(part: string): color {
        return ({
                "files": Theme.filesTone,
                "trash": Theme.trashTone,
                "notVisible": Theme.notVisibleTone,
                "otherVolumes": Theme.otherVolumesTone
            })[part];
    }

    columnSpacing: Theme.gapLarge
    rowSpacing: Theme.gap

    Repeater {
        model: root.spaceParts

        RowLayout {
            id: part

            required property var modelData

            Layout.alignment: Qt.AlignTop
            Layout.fillWidth: true
            Layout.preferredWidth: root.columnWidth
            spacing: Theme.gapSmall

            Rectangle {
                Layout.alignment: Qt.AlignTop
                Layout.topMargin: Theme.gapTiny
                color: root.toneOf(part.modelData.part)
                implicitHeight: Theme.scaled(Theme.gapSmall) + Theme.gapTiny
                implicitWidth: implicitHeight
                radius: Theme.gapTiny
            }
            ColumnLayout {
                Layout.fillWidth: true
                spacing: 0

                RowLayout {
                    Layout.fillWidth: true
                    spacing: Theme.gapSmall

                    Text {
                        Layout.fillWidth: true
                        color: Theme.text
                        font: Theme.body
                        text: part.modelData.title
                        horizontalAlignment: Text.AlignLeft
                        wrapMode: Text.Wrap
                        Accessible.role: Accessible.StaticText
                        Accessible.name: text
                    }
                    ByteAmount {
                        amount: part.modelData.amount
                        exact: part.modelData.exact
                    }
                }
                Text {
                    Layout.fillWidth: true
                    color: Theme.textSecondary
                    font: Theme.caption
                    text: part.modelData.explanation
                    horizontalAlignment: Text.AlignLeft
                    wrapMode: Text.Wrap
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                }
            }
        }
    }
}
