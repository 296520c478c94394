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
    }
    EmptyState {
        Layout.alignment: Qt.AlignHCenter
        Layout.fillWidth: true
        Layout.topMargin: Theme.margin
        sentence: root.model.emptySentence
        visible: !root.model.hasLocations
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
