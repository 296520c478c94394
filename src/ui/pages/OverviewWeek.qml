import QtQuick
import QtQuick.Layouts
import Brindle.Charts
import Brindle.Models
import Brindle.Parts
import Brindle.Theme

// The last seven days as bars, with what they add up to.
Card {
    id: root

    required property OverviewModel model

    padding: Theme.gapLarge
    spacing: Theme.gap

    SectionTitle {
        Layout.fillWidth: true
        text: Catalogue.translated("Last seven days")
    }
    Flow {
        Layout.fillWidth: true
        spacing: Theme.gapLarge
        visible: root.model.weekAdded.length > 0

        Figure {
            amount: root.model.weekAdded
            caption: Catalogue.translated("Added")
            exact: root.model.weekAddedExact
            isClickable: true
            tone: Figure.Added

            onActivated: root.model.openWeekAdded()
        }
        Figure {
            amount: root.model.weekFreed
            caption: Catalogue.translated("Freed")
            exact: root.model.weekFreedExact
            isClickable: true
            tone: Figure.Freed

            onActivated: root.model.openWeekFreed()
        }
    }
    DayBars {
        Layout.fillHeight: true
        Layout.fillWidth: true
        model: root.model.week

        onActivated: index => root.model.openDay(index)
    }
    Text {
        Layout.fillWidth: true
        color: Theme.textSecondary
        font: Theme.caption
        text: root.model.weekCoverage
        horizontalAlignment: Text.AlignLeft
        wrapMode: Text.Wrap
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
