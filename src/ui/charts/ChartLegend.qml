import QtQuick
import Brindle.Charts
import Brindle.Theme

// What the bars of a chart of days mean.
Flow {
    id: root

    spacing: Theme.gap

    component Meaning: Row {
        id: meaning

        required property string text
        default property alias sample: place.data

        spacing: Theme.gapTiny

        Item {
            id: place

            anchors.verticalCenter: parent.verticalCenter
            width: Theme.scaled(Theme.gapSmall + Theme.gapTiny)
            height: width
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            text: meaning.text
            font: Theme.caption
            color: Theme.textSecondary
        }
    }

    Meaning {
        text: Catalogue.translated("Added")

        Rectangle {
            anchors.fill: parent
            color: Theme.added
        }
    }
    Meaning {
        text: Catalogue.translated("Freed")

        Rectangle {
            anchors.fill: parent
            color: Theme.freed
        }
    }
    Meaning {
        text: Catalogue.translated("Estimated")

        Rectangle {
            anchors.fill: parent
            color: "transparent"
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
        text: Catalogue.translated("Partial")

        CornerMark {
            anchors.fill: parent
            color: Theme.warning
            isMirrored: root.LayoutMirroring.enabled
        }
    }
}
