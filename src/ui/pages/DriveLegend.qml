import QtQuick
import QtQuick.Layouts
import Brindle.Parts
import Brindle.Theme

// What each part of a drive's bar is, with its amount.
Item {
    id: root

    property alias columns: grid.columns
    required property var spaceParts

    function toneOf(part: string): color {
        return ({
                "files": Theme.filesTone,
                "trash": Theme.trashTone,
                "notVisible": Theme.notVisibleTone,
                "otherVolumes": Theme.otherVolumesTone
            })[part];
    }

    implicitHeight: grid.implicitHeight
    implicitWidth: grid.implicitWidth

    GridLayout {
        id: grid

        columnSpacing: Theme.gapLarge
        rowSpacing: Theme.gap
        width: root.width

        Repeater {
            model: root.spaceParts

            RowLayout {
                id: part

                required property var modelData

                Layout.alignment: Qt.AlignTop
                Layout.fillWidth: true
                Layout.preferredWidth: 0  // of equal width; one taken from the whole would set off the layout again
                spacing: Theme.gapSmall

                Rectangle {
                    Layout.alignment: Qt.AlignTop
                    Layout.topMargin: Theme.gapTiny
                    color: root.toneOf(part.modelData.part)
                    implicitHeight: Theme.scaled(Theme.gapSmall) + Theme.gapTiny
                    implicitWidth: implicitHeight
                    radius: Theme.gapTiny
                }
                TextColumn {
                    Layout.fillWidth: true

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
}
