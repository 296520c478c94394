import QtQuick
import QtQuick.Layouts
import Brindle.Charts
import Brindle.Models
import Brindle.Parts
import Brindle.Theme

// A week, a month or a quarter as a chart or as a table, with the figures of the whole and the folders that
// contributed most.
PageScroll {
    id: root

    required property TrendsModel model

    readonly property bool isBeside: width >= Theme.scaled(1000)

    PageHeader {
        title: Catalogue.translated("Trends")
        subtitle: root.model.period
        Layout.fillWidth: true

        IconButton {
            symbol: "chevron-left"
            text: Catalogue.translated("Earlier days")
            enabled: root.model.hasEarlier
            onClicked: root.model.moveByRanges(-1)
        }
        IconButton {
            symbol: "chevron-right"
            text: Catalogue.translated("Later days")
            enabled: root.model.hasLater
            onClicked: root.model.moveByRanges(1)
        }
        LinkButton {
            text: Catalogue.translated("Today")
            visible: root.model.hasLater
            onClicked: root.model.showToday()
        }
        SegmentedChoice {
            text: Catalogue.translated("Length")
            options: root.model.ranges
            currentIndex: root.model.range
            onChosen: index => root.model.chooseRange(index)
        }
        ScopeChoice {
            scopes: root.model.scopes
        }
    }
    Card {
        Layout.fillWidth: true

        TrendsFigures {
            model: root.model
            Layout.fillWidth: true
        }
    }
    GridLayout {
        columns: root.isBeside ? 2 : 1
        columnSpacing: Theme.gap
        rowSpacing: Theme.gap
        Layout.fillWidth: true

        Card {
            spacing: Theme.gap
            Layout.fillWidth: true
            Layout.alignment: Qt.AlignTop

            RowLayout {
                spacing: Theme.gap
                visible: root.model.hasFigures
                Layout.fillWidth: true

                TrendsReading {
                    model: root.model
                    Layout.fillWidth: true
                }
                SegmentedChoice {
                    text: Catalogue.translated("Shown as")
                    options: [Catalogue.translated("Chart"), Catalogue.translated("Table")]
                    currentIndex: root.model.showsTable ? 1 : 0
                    Layout.alignment: Qt.AlignTop
                    onChosen: index => root.model.showsTable = index === 1
                }
            }
            EmptyState {
                sentence: Catalogue.translated("Once a check has recorded one of these days, its changes are here.")
                actionText: root.model.hasLater ? Catalogue.translated("Today") : ""
                visible: !root.model.hasFigures
                Layout.fillWidth: true
                Layout.margins: Theme.margin
                onActed: root.model.showToday()
            }
            Loader {
                sourceComponent: root.model.showsTable ? table : chart
                visible: root.model.hasFigures
                Layout.fillWidth: true
            }
        }
        Card {
            Layout.fillWidth: !root.isBeside
            Layout.preferredWidth: Theme.scaled(300)
            Layout.alignment: Qt.AlignTop

            TrendsContributors {
                model: root.model
                Layout.fillWidth: true
            }
        }
    }

    Component {
        id: chart

        ColumnLayout {
            spacing: Theme.gap

            BarChart {
                days: root.model.days
                marks: root.model.dayMarks
                changeLines: root.model.changeLines
                zeroPlace: root.model.zeroPlace
                sizeLines: root.model.sizeLines
                sizeShares: root.model.sizeShares
                currentRow: root.model.currentRow
                Layout.fillWidth: true
                onChosen: row => root.model.currentRow = row
                onActivated: row => root.model.showDay(row)
            }
            ChartLegend {
                Layout.fillWidth: true
            }
        }
    }
    Component {
        id: table

        TrendsTable {
            model: root.model
        }
    }
}
