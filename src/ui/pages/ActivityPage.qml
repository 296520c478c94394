import QtQuick
import Brindle.Models
import Brindle.Theme

// A day or a period: its figures, and the folders and files behind them. Where the window is low, what stands
// above the list scrolls with it.
FocusScope {
    id: root

    required property ActivityModel model
    required property int widthClass

    readonly property ExplorerModel explorer: root.model.explorer
    readonly property bool isLow: height - top.implicitHeight - pager.height < Theme.scaled(280)

    function focusSearch() {
        if (root.visible && root.explorer.takeSearchFocus())
            toolbar.focusSearch();
    }

    Component.onCompleted: root.focusSearch()
    onVisibleChanged: root.focusSearch()
    Keys.onUpPressed: event => {
        event.accepted = (event.modifiers & Qt.AltModifier) && root.explorer.canGoUp;
        if (event.accepted)
            root.explorer.goUp();
    }

    Connections {
        target: root.explorer
        function onSearchFocusRequested() {
            root.focusSearch();
        }
    }

    Item {
        id: fixedPlace

        height: root.isLow ? 0 : top.implicitHeight
        anchors {
            left: parent.left
            right: parent.right
            top: parent.top
            leftMargin: Theme.margin
            rightMargin: Theme.margin
            topMargin: root.isLow ? 0 : Theme.gapLarge
        }

        Column {
            id: top

            parent: root.isLow && list.headerItem ? list.headerItem : fixedPlace
            y: root.isLow ? Theme.gapLarge : 0
            width: parent.width
            spacing: Theme.gap

            ActivityHeader {
                width: top.width
                model: root.model
                onEstimatesRequested: list.showEstimates()
            }
            ExplorerToolbar {
                id: toolbar
                width: top.width
                explorer: root.explorer
                onSearched: list.forceActiveFocus(Qt.TabFocusReason)
            }
            ExplorerTrail {
                width: top.width
                explorer: root.explorer
            }
            ExplorerColumns {
                width: top.width
                explorer: root.explorer
            }
        }
    }
    ExplorerView {
        id: list

        explorer: root.explorer
        widthClass: root.widthClass
        headerHeight: root.isLow ? top.implicitHeight + Theme.gapLarge + Theme.gapSmall : 0
        focus: true
        anchors {
            left: parent.left
            right: parent.right
            top: fixedPlace.bottom
            bottom: pager.top
            leftMargin: Theme.margin - Theme.gapSmall
            rightMargin: Theme.margin - Theme.gapSmall
            topMargin: root.isLow ? 0 : Theme.gapSmall
        }
    }
    RowsPager {
        id: pager

        text: root.explorer.rowsText
        hasPrevious: root.explorer.hasPreviousPage
        hasNext: root.explorer.hasNextPage
        visible: root.explorer.hasPages
        height: visible ? implicitHeight + Theme.gapSmall : 0
        onTurned: pages => root.explorer.turnPage(pages)
        anchors {
            left: parent.left
            right: parent.right
            bottom: parent.bottom
            leftMargin: Theme.margin
            rightMargin: Theme.margin
        }
    }
}
