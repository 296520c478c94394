import QtQuick
import QtQuick.Layouts
import Brindle.Charts
import Brindle.Models
import Brindle.Parts
import Brindle.Theme

// What came and went today, and where.
Card {
    id: root

    required property OverviewModel model

    readonly property bool isRecorded: root.model.state === OverviewModel.Recorded
    readonly property bool isEstimated: root.model.state === OverviewModel.Estimated

    padding: Theme.gapLarge
    spacing: Theme.gap

    RowLayout {
        Layout.fillWidth: true
        spacing: Theme.gapSmall

        SectionTitle {
            Layout.fillWidth: true
            text: Catalogue.translated("Today")
        }
        Text {
            color: Theme.warning
            font: Theme.label
            text: Catalogue.translated("Partial")
            horizontalAlignment: Text.AlignLeft
            visible: root.model.partial.length > 0
        }
        CornerMark {
            Layout.alignment: Qt.AlignTop
            color: Theme.warning
            implicitHeight: Theme.scaled(Theme.gapSmall)
            implicitWidth: Theme.scaled(Theme.gapSmall)
            isMirrored: LayoutMirroring.enabled
            visible: root.model.partial.length > 0
        }
    }
    Flow {
        Layout.fillWidth: true
        spacing: Theme.gapLarge
        visible: root.isRecorded || root.isEstimated

        Figure {
            amount: root.model.net
            caption: root.isEstimated ? Catalogue.translated("Estimated") : Catalogue.translated("Net change")
            exact: root.model.netExact
            isClickable: true
            isLarge: true
            tone: root.isEstimated ? Figure.Estimated : root.model.netDirection > 0 ? Figure.Added : root.model.netDirection < 0 ? Figure.Freed : Figure.Neutral

            onActivated: root.model.openToday()
        }
        Row {
            spacing: Theme.gapLarge
            visible: root.isRecorded

            Figure {
                amount: root.model.added
                caption: Catalogue.translated("Added")
                exact: root.model.addedExact
                isClickable: true
                tone: Figure.Added

                onActivated: root.model.openTodayAdded()
            }
            Figure {
                amount: root.model.freed
                caption: Catalogue.translated("Freed")
                exact: root.model.freedExact
                isClickable: true
                tone: Figure.Freed

                onActivated: root.model.openTodayFreed()
            }
        }
    }
    Text {
        Layout.fillWidth: true
        color: Theme.text
        font: Theme.body
        text: root.isRecorded || root.isEstimated ? root.model.sentence : root.model.stateSentence
        horizontalAlignment: Text.AlignLeft
        visible: text.length > 0
        wrapMode: Text.Wrap
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    Text {
        Layout.fillWidth: true
        color: Theme.textSecondary
        font: Theme.secondary
        text: root.model.partial
        horizontalAlignment: Text.AlignLeft
        visible: text.length > 0
        wrapMode: Text.Wrap
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    Item {
        Layout.fillHeight: true
    }
    Text {
        Layout.fillWidth: true
        color: Theme.textSecondary
        font: Theme.secondary
        text: root.model.lastCheck
        horizontalAlignment: Text.AlignLeft
        wrapMode: Text.Wrap
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    LinkButton {
        text: root.model.files
        visible: text.length > 0

        onClicked: root.model.openToday()
    }
}
