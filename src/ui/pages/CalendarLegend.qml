import QtQuick
import Brindle.Charts
import Brindle.Models
import Brindle.Parts
import Brindle.Theme

// What the colours and marks of the calendar mean.
Flow {
    id: root

    required property StorageHistoryModel model

    spacing: Theme.gap

    component Sample: Rectangle {
        width: Theme.scaled(Theme.gap)
        height: width
        color: "transparent"
        radius: Theme.radius / 4
    }
    component Meaning: Row {
        id: meaning

        required property string text
        default property alias sample: place.data

        spacing: Theme.gapTiny

        Item {
            id: place

            anchors.verticalCenter: parent.verticalCenter
            width: childrenRect.width
            height: childrenRect.height
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            text: meaning.text
            horizontalAlignment: Text.AlignLeft
            font: Theme.caption
            color: Theme.textSecondary
        }
    }

    Row {
        spacing: Theme.gapTiny

        Text {
            anchors.verticalCenter: parent.verticalCenter
            text: root.model.legendBegin
            horizontalAlignment: Text.AlignLeft
            font: Theme.caption
            color: Theme.textSecondary
        }
        Repeater {
            model: root.model.legend

            Sample {
                id: stepSample

                required property int step
                required property string text

                color: Theme.netColor(stepSample.step)
                Accessible.role: Accessible.StaticText
                Accessible.name: stepSample.text
                Accessible.ignored: stepSample.text === ""

                HoverHandler {
                    id: pointer
                }
                Tooltip {
                    text: stepSample.text
                    visible: pointer.hovered && stepSample.text !== ""
                }
            }
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            text: root.model.legendEnd
            horizontalAlignment: Text.AlignLeft
            font: Theme.caption
            color: Theme.textSecondary
        }
    }
    Meaning {
        text: Catalogue.translated("Partial")

        Sample {
            color: Theme.netColor(0)

            CornerMark {
                anchors.right: parent.right
                anchors.top: parent.top
                width: parent.width / 2
                height: width
                color: Theme.onNetColor(0)
                isMirrored: root.LayoutMirroring.enabled
            }
        }
    }
    Meaning {
        text: Catalogue.translated("Estimated")

        Sample {
            border.color: Theme.estimated
            border.width: Theme.borderWidth

            HatchPattern {
                anchors.fill: parent
                color: Theme.estimated
                lineWidth: Theme.borderWidth
                spacing: Theme.gapTiny
            }
        }
    }
    Meaning {
        text: Catalogue.translated("No check")

        Sample {
            border.color: Theme.line
            border.width: Theme.borderWidth
        }
    }
}
