import QtQuick

// Shows the wanted one of its screens. A screen is made a little at a time, so that the window goes on
// answering; the one before stays until then. Only the first is waited for.
Item {
    id: root

    required property list<Component> screens
    // One of `screens`, or null.
    required property Component wanted
    property Component shown: null

    onWantedChanged: {
        if (root.wanted === null)
            root.shown = null;
    }

    Repeater {
        model: root.screens.length

        Loader {
            id: place

            required property int index
            readonly property Component screen: root.screens[place.index]

            active: place.screen === root.wanted || place.screen === root.shown
            visible: place.screen === root.shown
            asynchronous: root.shown !== null
            sourceComponent: place.screen
            anchors.fill: parent
            onLoaded: {
                if (place.screen === root.wanted)
                    root.shown = place.screen;
            }
        }
    }
}
