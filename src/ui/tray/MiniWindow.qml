import QtQuick
import QtQuick.Layouts
import QtQuick.Window
import Brindle.Models
import Brindle.Parts
import Brindle.Theme

// Today's figures in a corner of the screen. It is moved by its ground.
Window {
    id: root

    required property MiniWindowModel model
    required property bool canKeepOnTop

    width: Theme.scaled(300)
    height: Theme.scaled(176)
    minimumWidth: width
    maximumWidth: width
    minimumHeight: height
    maximumHeight: height
    flags: Qt.Window | Qt.FramelessWindowHint | (root.model.keepsOnTop ? Qt.WindowStaysOnTopHint : 0)
    transientParent: null
    color: Theme.surface
    title: "Brindle"
    LayoutMirroring.enabled: Application.layoutDirection === Qt.RightToLeft
    LayoutMirroring.childrenInherit: true
    onClosing: root.model.close()

    Shortcut {
        sequences: ["Escape", "Ctrl+W", "Ctrl+Alt+M"]
        onActivated: root.model.close()
    }
    Shortcut {
        sequence: "Ctrl+0"
        onActivated: root.model.openMainWindow()
    }
    DragHandler {
        target: null
        onActiveChanged: if (active)
            root.startSystemMove()
    }
    Rectangle {
        anchors.fill: parent
        color: "transparent"
        border.color: Theme.controlLine
        border.width: Theme.borderWidth
    }
    ColumnLayout {
        anchors.fill: parent
        anchors.leftMargin: Theme.gap
        anchors.rightMargin: Theme.gap
        anchors.topMargin: Theme.gapSmall
        anchors.bottomMargin: Theme.gap
        spacing: Theme.gapSmall

        RowLayout {
            spacing: Theme.gapTiny
            // The buttons' symbols, rather than their grounds, end where the line ends.
            Layout.rightMargin: -Theme.gapSmall

            SectionTitle {
                text: Catalogue.translated("Today")
            }
            Text {
                text: Catalogue.translated("Example")
                visible: root.model.isExample
                font: Theme.caption
                color: Theme.textSecondary
                horizontalAlignment: Text.AlignLeft
                Accessible.role: Accessible.StaticText
                Accessible.name: text
                Layout.leftMargin: Theme.gapTiny
            }
            Item {
                Layout.fillWidth: true
            }
            IconButton {
                symbol: "pin"
                text: Catalogue.translated("Keep on top")
                help: root.model.keepsOnTopHelp
                isFilled: true
                checkable: true
                checked: root.model.keepsOnTop
                visible: root.canKeepOnTop
                onClicked: root.model.toggleKeepsOnTop()
            }
            IconButton {
                symbol: "close"
                text: Catalogue.translated("Close Mini Window")
                onClicked: root.model.close()
            }
        }
        RowLayout {
            visible: root.model.hasFigures
            spacing: Theme.gapLarge

            Figure {
                caption: Catalogue.translated("Added")
                amount: root.model.added
                exact: root.model.addedExact
                tone: Figure.Added
            }
            Figure {
                caption: Catalogue.translated("Freed")
                amount: root.model.freed
                exact: root.model.freedExact
                tone: Figure.Freed
            }
        }
        Text {
            text: root.model.message
            visible: !root.model.hasFigures
            font: Theme.body
            color: Theme.text
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignLeft
            Accessible.role: Accessible.StaticText
            Accessible.name: text
            Layout.fillWidth: true
        }
        Item {
            Layout.fillHeight: true
        }
        Text {
            text: root.model.status
            font: Theme.caption
            color: Theme.textSecondary
            elide: Text.ElideMiddle
            horizontalAlignment: Text.AlignLeft
            Accessible.role: Accessible.StaticText
            Accessible.name: text
            Layout.fillWidth: true
        }
        PushButton {
            text: Catalogue.translated("Open Brindle")
            onClicked: root.model.openMainWindow()
        }
    }
}
