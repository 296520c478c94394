import QtQuick
import QtQuick.Layouts
import Brindle.Charts
import Brindle.Models
import Brindle.Parts
import Brindle.Theme

// Today's statement, the last seven days, the folders behind them, and the drives.
PageScroll {
    id: root

    required property OverviewModel model

    readonly property bool hasFigures: root.model.state !== OverviewModel.NothingYet && root.model.state !== OverviewModel.FirstCheck

    PageHeader {
        Layout.fillWidth: true
        subtitle: root.model.day
        title: Catalogue.translated("Overview")

        ScopeChoice {
            scopes: root.model.scopes
        }
    }
    Repeater {
        model: root.model.troubles

        Banner {
            id: trouble

            required property string modelData

            Layout.fillWidth: true
            isWarning: true
            radius: Theme.radius
            text: trouble.modelData

            LinkButton {
                text: Catalogue.translated("Drives & folders")

                onClicked: root.model.openDrives()
            }
        }
    }
    EmptyState {
        Layout.alignment: Qt.AlignHCenter
        Layout.bottomMargin: Theme.margin
        Layout.fillWidth: true
        Layout.topMargin: Theme.margin
        actionText: root.model.state === OverviewModel.NothingYet ? Catalogue.translated("Check Now") : ""
        sentence: root.model.stateSentence
        visible: !root.hasFigures

        onActed: root.model.checkNow()
    }
    GridLayout {
        id: cards

        readonly property real cardWidth: cards.columns === 2 ? (cards.width - cards.columnSpacing) / 2 : cards.width

        Layout.fillWidth: true
        columnSpacing: Theme.gap
        columns: cards.width >= Theme.scaled(840) ? 2 : 1
        rowSpacing: Theme.gap

        OverviewToday {
            Layout.fillHeight: true
            Layout.fillWidth: true
            Layout.preferredWidth: cards.cardWidth
            model: root.model
            visible: root.hasFigures
        }
        OverviewWeek {
            Layout.fillHeight: true
            Layout.fillWidth: true
            Layout.preferredWidth: cards.cardWidth
            model: root.model
            visible: root.hasFigures
        }
        OverviewFolders {
            Layout.columnSpan: drives.visible ? 1 : cards.columns
            Layout.fillHeight: true
            Layout.fillWidth: true
            Layout.preferredWidth: drives.visible ? cards.cardWidth : cards.width
            model: root.model
            visible: root.hasFigures
        }
        OverviewDrives {
            id: drives

            Layout.fillHeight: true
            Layout.fillWidth: true
            Layout.preferredWidth: cards.cardWidth
            model: root.model
        }
    }
    Row {
        id: estimates

        Layout.fillWidth: true
        spacing: Theme.gapSmall
        visible: root.model.estimates.length > 0

        Rectangle {
            id: swatch

            anchors.verticalCenter: parent.verticalCenter
            border.color: Theme.estimated
            border.width: Theme.borderWidth
            color: "transparent"
            height: Theme.scaled(Theme.gap)
            width: height

            HatchPattern {
                anchors.fill: parent
                color: Theme.estimated
                lineWidth: Theme.borderWidth
                spacing: Theme.gapTiny
            }
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            color: Theme.textSecondary
            font: Theme.secondary
            text: root.model.estimates
            horizontalAlignment: Text.AlignLeft
            width: Math.min(implicitWidth, estimates.width - swatch.width - link.width - 2 * estimates.spacing)
            wrapMode: Text.Wrap
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        LinkButton {
            id: link

            anchors.verticalCenter: parent.verticalCenter
            text: Catalogue.translated("Show estimates")

            onClicked: root.model.openEstimates()
        }
    }
}
