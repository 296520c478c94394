import QtQuick
import QtQuick.Templates as T
import Brindle.Theme

// A field for words to look for. Escape empties it, then leaves.
T.TextField {
    id: root

    property alias placeholder: root.placeholderText

    signal edited(string text)

    function empty() {
        root.text = "";
        root.edited("");
    }

    implicitWidth: Theme.scaled(240)
    implicitHeight: contentHeight + topPadding + bottomPadding
    verticalAlignment: TextInput.AlignVCenter
    topPadding: Theme.gapSmall
    bottomPadding: Theme.gapSmall
    leftPadding: root.effectiveHorizontalAlignment === TextInput.AlignRight ? clear.width : lens.width + 2 * Theme.gapSmall
    rightPadding: root.effectiveHorizontalAlignment === TextInput.AlignRight ? lens.width + 2 * Theme.gapSmall : clear.width
    font: Theme.body
    color: Theme.text
    selectionColor: Theme.accent
    selectedTextColor: Theme.onAccent
    selectByMouse: true
    Accessible.name: root.placeholder
    Keys.onEscapePressed: event => {
        event.accepted = root.text !== "";
        if (event.accepted)
            root.empty();
    }
    onTextEdited: root.edited(root.text)

    background: Rectangle {
        color: Theme.surface
        border.color: Theme.controlLine
        border.width: Theme.borderWidth
        radius: Theme.radius

        FocusRing {
            isShown: root.activeFocus
        }
    }

    Symbol {
        id: lens

        anchors.left: parent.left
        anchors.leftMargin: Theme.gapSmall
        anchors.verticalCenter: parent.verticalCenter
        name: "search"
    }
    Text {
        anchors.left: lens.right
        anchors.right: parent.right
        anchors.leftMargin: Theme.gapSmall
        anchors.rightMargin: Theme.gapSmall
        anchors.verticalCenter: parent.verticalCenter
        visible: root.text === "" && root.preeditText === ""
        text: root.placeholder
        font: root.font
        color: Theme.textSecondary
        elide: Text.ElideRight
        horizontalAlignment: Text.AlignLeft
        Accessible.ignored: true
    }
    IconButton {
        id: clear

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        visible: root.text !== ""
        symbol: "close"
        text: Catalogue.translated("Clear")
        onClicked: {
            root.empty();
            root.forceActiveFocus();
        }
    }
}
