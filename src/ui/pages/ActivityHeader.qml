import QtQuick
import QtQuick.Layouts
import Brindle.Models
import Brindle.Parts
import Brindle.Theme

// Which day or period, the way to others, and its figures.
Column {
    id: root

    required property ActivityModel model

    readonly property real figureWidth: Theme.scaled(136)

    signal estimatesRequested

    spacing: Theme.gap

    PageHeader {
        width: root.width
        title: root.model.title

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
        ScopeChoice {
            scopes: root.model.scopes
        }
        PushButton {
            text: Catalogue.translated("Export…")
            onClicked: root.model.exportStatement()
        }
    }
    Flow {
        width: root.width
        spacing: Theme.gap
        visible: root.model.hasFigures || root.model.estimated.length > 0

        Figure {
            width: root.figureWidth
            caption: Catalogue.translated("Net change")
            amount: root.model.net
            exact: root.model.netExact
            visible: root.model.hasFigures
        }
        Figure {
            width: root.figureWidth
            caption: Catalogue.translated("Added")
            amount: root.model.added
            exact: root.model.addedExact
            tone: Figure.Added
            visible: root.model.hasFigures
        }
        Figure {
            width: root.figureWidth
            caption: Catalogue.translated("Freed")
            amount: root.model.freed
            exact: root.model.freedExact
            tone: Figure.Freed
            visible: root.model.hasFigures
        }
        Figure {
            width: root.figureWidth
            caption: Catalogue.translated("Files changed")
            amount: root.model.files
            visible: root.model.hasFigures
        }
        Figure {
            width: root.figureWidth
            caption: Catalogue.translated("Estimated")
            amount: root.model.estimated
            exact: root.model.estimatedExact
            tone: Figure.Estimated
            isClickable: true
            visible: root.model.estimated.length > 0
            onActivated: root.estimatesRequested()
        }
    }
    Text {
        width: root.width
        text: root.model.explanation
        horizontalAlignment: Text.AlignLeft
        font: Theme.body
        color: Theme.text
        wrapMode: Text.Wrap
        textFormat: Text.PlainText
        visible: text.length > 0
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    RowLayout {
        width: root.width
        spacing: Theme.gapSmall
        visible: root.model.coverage.length > 0

        Symbol {
            name: "warning"
            color: Theme.warning
            visible: root.model.isPartial
        }
        Text {
            text: root.model.coverage
            horizontalAlignment: Text.AlignLeft
            font: Theme.secondary
            color: Theme.textSecondary
            wrapMode: Text.Wrap
            textFormat: Text.PlainText
            Layout.fillWidth: true
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
}
