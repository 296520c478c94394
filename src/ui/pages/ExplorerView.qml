import QtQuick
import Brindle.Models
import Brindle.Parts
import Brindle.Theme

// The rows of the explorer, one after the other: recorded ones, then estimated ones under their own heading.
ListView {
    id: root

    objectName: "changes"

    required property ExplorerModel explorer
    required property int widthClass
    required property real headerHeight

    // Once the view has found its place, and while where it is scrolled to is the user's doing.
    property bool isPlaced: false
    property bool isPlaceKept: false

    function restorePlace() {
        root.isPlaceKept = false;
        root.forceLayout();
        root.currentIndex = root.explorer.currentRow;
        if (root.explorer.scroll > 0)
            root.contentY = root.originY + root.explorer.scroll;
        else
            root.positionViewAtBeginning();
        root.returnToBounds();
        root.isPlaced = true;
        root.isPlaceKept = true;
    }
    // What moves because of another size is no move of the user's.
    function settle() {
        root.isPlaceKept = false;
        settling.restart();
    }
    function showEstimates() {
        root.currentIndex = root.explorer.firstEstimatedRow;
        root.positionViewAtIndex(root.currentIndex, ListView.Beginning);
        root.forceActiveFocus(Qt.TabFocusReason);
    }
    function move(rows: int) {
        root.currentIndex = Math.max(0, Math.min(root.currentIndex + rows, root.count - 1));
    }

    model: root.explorer.rows
    clip: true
    cacheBuffer: 0
    activeFocusOnTab: true
    boundsBehavior: Flickable.StopAtBounds
    highlightMoveDuration: 0
    highlightResizeDuration: 0
    Accessible.role: Accessible.List
    Accessible.name: Catalogue.translated("Changes")

    onHeaderHeightChanged: root.settle()
    onHeightChanged: root.settle()
    onCurrentIndexChanged: if (root.isPlaced)
        root.explorer.currentRow = root.currentIndex
    onContentYChanged: if (root.isPlaceKept)
        root.explorer.scroll = root.contentY - root.originY
    Keys.onPressed: event => {
        const page = Math.max(1, Math.floor(root.height / Theme.scaled(56)) - 1);
        event.accepted = true;
        if (event.key === Qt.Key_Backspace || event.key === Qt.Key_Up && event.modifiers & Qt.AltModifier)
            root.explorer.goUp();
        else if (event.key === Qt.Key_Escape && root.explorer.search.length > 0)
            root.explorer.clearSearch();
        else if (event.key === Qt.Key_Home)
            root.currentIndex = 0;
        else if (event.key === Qt.Key_End)
            root.currentIndex = root.count - 1;
        else if (event.key === Qt.Key_PageUp)
            root.move(-page);
        else if (event.key === Qt.Key_PageDown)
            root.move(page);
        else
            event.accepted = false;
    }

    Timer {
        id: settling

        interval: 0
        running: true
        onTriggered: root.restorePlace()
    }
    Connections {
        target: root.explorer
        function onPlaceRestored() {
            root.restorePlace();
        }
    }

    header: Item {
        width: root.width - 2 * Theme.gapSmall
        height: root.headerHeight
        x: Theme.gapSmall
    }
    highlight: Item {
        z: 2

        FocusRing {
            anchors.margins: 0
            isShown: root.activeFocus
        }
    }
    delegate: ExplorerRow {
        width: root.width
        isNarrow: root.widthClass === 0
        onActivated: root.explorer.open(index)
    }
    section.property: "isEstimated"
    section.delegate: EstimatesHeading {
        width: root.width
        explorer: root.explorer
    }

    EmptyState {
        width: root.width
        y: root.headerHeight + (root.height - root.headerHeight - height) / 3
        sentence: root.explorer.emptySentence
        actionText: root.explorer.emptyActionText
        visible: root.explorer.emptySentence.length > 0
        onActed: root.explorer.followEmptyAction()
    }
}
