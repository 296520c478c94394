import QtQuick
import QtQuick.Layouts
import Brindle.Models
import Brindle.Parts
import Brindle.Theme

// Where the space of every drive is, and how every location fares.
PageScroll {
    id: root

    required property DrivesModel model

    PageHeader {
        Layout.fillWidth: true
        title: Catalogue.translated("Drives & folders")

        PushButton {
            text: Catalogue.translated("Add Folder…")
            visible: root.model.actions.isOffered && root.model.hasLocations

            onClicked: root.model.actions.addFolder()
        }
        PushButton {
            text: Catalogue.translated("Add Drive…")
            visible: root.model.actions.isOffered

            onClicked: root.model.actions.addDrive()
        }
    }
    Text {
        Accessible.name: text
        Accessible.role: Accessible.StaticText
        Layout.fillWidth: true
        color: Theme.textSecondary
        font: Theme.body
        horizontalAlignment: Text.AlignLeft
        text: root.model.actions.waitingText
        visible: text.length > 0
        wrapMode: Text.Wrap
    }
    EmptyState {
        Layout.alignment: Qt.AlignHCenter
        Layout.fillWidth: true
        Layout.topMargin: Theme.margin
        actionText: root.model.actions.isOffered ? Catalogue.translated("Add Folder…") : ""
        sentence: root.model.emptySentence
        visible: !root.model.hasLocations

        onActed: root.model.actions.addFolder()
    }
    SectionTitle {
        Layout.fillWidth: true
        text: Catalogue.translated("Drives")
        visible: drives.count > 0
    }
    Repeater {
        id: drives

        model: root.model.drives

        DriveCard {
            Layout.fillWidth: true
        }
    }
    SectionTitle {
        Layout.fillWidth: true
        text: Catalogue.translated("Included locations")
        visible: root.model.hasLocations
    }
    Repeater {
        model: root.model.locations

        LocationCard {
            Layout.fillWidth: true
            model: root.model
        }
    }
}
