import QtQuick
import QtQuick.Layouts
import Brindle.Models
import Brindle.Parts
import Brindle.Theme

// The days that are kept as calendars of their months, and beside them what is known of the selected one.
PageScroll {
    id: root

    required property StorageHistoryModel model

    readonly property bool isBeside: width >= Theme.scaled(880)

    PageHeader {
        title: Catalogue.translated("Storage history")
        Layout.fillWidth: true

        ScopeChoice {
            scopes: root.model.scopes
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
                spacing: Theme.gapSmall
                Layout.fillWidth: true

                SectionTitle {
                    text: root.model.month
                    Layout.fillWidth: true
                }
                LinkButton {
                    text: Catalogue.translated("Today")
                    visible: !root.model.isToday
                    onClicked: root.model.showToday()
                }
                IconButton {
                    symbol: "chevron-left"
                    text: Catalogue.translated("Previous month")
                    enabled: root.model.hasPreviousMonth
                    onClicked: root.model.moveByMonths(-1)
                }
                IconButton {
                    symbol: "chevron-right"
                    text: Catalogue.translated("Next month")
                    enabled: root.model.hasNextMonth
                    onClicked: root.model.moveByMonths(1)
                }
            }
            MonthGrid {
                model: root.model
                focus: true
                Layout.fillWidth: true
            }
            CalendarLegend {
                model: root.model
                Layout.fillWidth: true
            }
            Rectangle {
                color: Theme.line
                implicitHeight: Theme.borderWidth
                Layout.fillWidth: true
            }
            FigureFlow {
                figures: root.model.monthFigures
                visible: root.model.hasMonthFigures
                Layout.fillWidth: true
            }
            Text {
                text: root.model.monthCoverage
                font: Theme.secondary
                color: Theme.textSecondary
                wrapMode: Text.Wrap
                Layout.fillWidth: true
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }
        DayStatement {
            model: root.model
            Layout.fillWidth: !root.isBeside
            Layout.preferredWidth: Theme.scaled(300)
            Layout.alignment: Qt.AlignTop
        }
    }
}
