import QtQuick
import QtQuick.Layouts
import Brindle.Models
import Brindle.Parts
import Brindle.Theme

// Stands above the estimated rows; above the recorded ones there is nothing to say.
Item {
    id: root

    required property string section
    required property ExplorerModel explorer

    readonly property bool isShown: root.section === "true"

    height: isShown ? column.implicitHeight + Theme.gapLarge + Theme.gapSmall : 0

    ColumnLayout {
        id: column

        spacing: Theme.gapTiny
        visible: root.isShown
        anchors {
            left: parent.left
            right: parent.right
            bottom: parent.bottom
            leftMargin: Theme.gapSmall
            rightMargin: Theme.gapSmall
            bottomMargin: Theme.gapSmall
        }

        SectionTitle {
            text: Catalogue.translated("Estimated")
            Layout.fillWidth: true
        }
        Text {
            text: root.explorer.estimatesText
            font: Theme.secondary
            color: Theme.textSecondary
            wrapMode: Text.Wrap
            Layout.fillWidth: true
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        RowsPager {
            text: root.explorer.estimatesRowsText
            hasPrevious: root.explorer.hasPreviousEstimatesPage
            hasNext: root.explorer.hasNextEstimatesPage
            visible: root.explorer.hasEstimatesPages
            Layout.fillWidth: true
            onTurned: pages => root.explorer.turnEstimatesPage(pages)
        }
    }
}
