import QtQuick
import Brindle.Models
import Brindle.Parts
import Brindle.Theme

// Stands above the estimated rows; above the recorded ones there is nothing to say. Its height is known at once,
// so that the view's place does not move when it comes.
Item {
    id: root

    required property string section
    required property ExplorerModel explorer

    readonly property bool isShown: root.section === "true"

    height: root.isShown ? Math.ceil(words.y + words.implicitHeight + pager.height) + Theme.gapSmall : 0

    SectionTitle {
        id: title

        y: Theme.gap
        text: Catalogue.translated("Estimated")
        visible: root.isShown
        anchors {
            left: parent.left
            right: parent.right
            leftMargin: Theme.gapSmall
            rightMargin: Theme.gapSmall
        }
    }
    Text {
        id: words

        y: title.y + title.implicitHeight + Theme.gapTiny
        text: root.explorer.estimatesText
        horizontalAlignment: Text.AlignLeft
        font: Theme.secondary
        color: Theme.textSecondary
        wrapMode: Text.Wrap
        visible: root.isShown
        Accessible.role: Accessible.StaticText
        Accessible.name: text
        anchors {
            left: parent.left
            right: parent.right
            leftMargin: Theme.gapSmall
            rightMargin: Theme.gapSmall
        }
    }
    RowsPager {
        id: pager

        y: words.y + words.implicitHeight
        height: visible ? implicitHeight : 0
        text: root.explorer.estimatesRowsText
        hasPrevious: root.explorer.hasPreviousEstimatesPage
        hasNext: root.explorer.hasNextEstimatesPage
        visible: root.isShown && root.explorer.hasEstimatesPages
        onTurned: pages => root.explorer.turnEstimatesPage(pages)
        anchors {
            left: parent.left
            right: parent.right
            leftMargin: Theme.gapSmall
            rightMargin: Theme.gapSmall
        }
    }
}
