import QtQuick
import QtQuick.Layouts
import Brindle.Models
import Brindle.Parts
import Brindle.Theme

// Which day or period, the way to others, and its figures.
ColumnLayout {
    id: root

    required property ActivityModel model

    signal estimatesRequested

    spacing: Theme.gap

    PageHeader {
        title: root.model.title
        subtitle: root.model.explanation
        Layout.fillWidth: true

        IconButton {
            symbol: "chevron-left"
            text: Catalogue.translated("Previous day")
            onClicked: root.model.moveDay(-1)
        }
        IconButton {
            symbol: "chevron-right"
            text: Catalogue.translated("Next day")
            enabled: root.model.hasNextDay
            onClicked: root.model.moveDay(1)
        }
        LinkButton {
            text: Catalogue.translated("Today")
            visible: !root.model.isToday
            onClicked: root.model.showToday()
        }
        ChoiceBox {
            label: Catalogue.translated("Locations")
            options: root.model.scopes.options
            currentIndex: root.model.scopes.currentIndex
            visible: root.model.scopes.hasChoice
            onChosen: index => root.model.scopes.choose(index)
        }
        PushButton {
            text: Catalogue.translated("Export…")
            onClicked: root.model.exportStatement()
        }
    }
    Flow {
        spacing: Theme.margin
        visible: root.model.hasFigures || root.model.estimated.length > 0
        Layout.fillWidth: true

        Figure {
            caption: Catalogue.translated("Net change")
            amount: root.model.net
            exact: root.model.netExact
            visible: root.model.hasFigures
        }
        Figure {
            caption: Catalogue.translated("Added")
            amount: root.model.added
            exact: root.model.addedExact
            tone: Figure.Added
            visible: root.model.hasFigures
        }
        Figure {
            caption: Catalogue.translated("Freed")
            amount: root.model.freed
            exact: root.model.freedExact
            tone: Figure.Freed
            visible: root.model.hasFigures
        }
        Figure {
            caption: Catalogue.translated("Files changed")
            amount: root.model.files
            visible: root.model.hasFigures
        }
        Figure {
            caption: Catalogue.translated("Estimated")
            amount: root.model.estimated
            exact: root.model.estimatedExact
            tone: Figure.Estimated
            isClickable: true
            visible: root.model.estimated.length > 0
            onActivated: root.estimatesRequested()
        }
    }
    RowLayout {
        spacing: Theme.gapSmall
        visible: root.model.coverage.length > 0
        Layout.fillWidth: true

        Symbol {
            name: "warning"
            color: Theme.warning
            visible: root.model.isPartial
        }
        Text {
            text: root.model.coverage
            font: Theme.secondary
            color: Theme.textSecondary
            wrapMode: Text.Wrap
            Layout.fillWidth: true
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
}
