import QtQuick
import QtQuick.Layouts
import Brindle.Models
import Brindle.Parts
import Brindle.Theme

// How much is included, what the checks are doing, and when the next ones come.
Item {
    id: root

    required property WindowModel model

    implicitHeight: row.implicitHeight + 2 * Theme.gapTiny
    Accessible.role: Accessible.StatusBar
    Accessible.name: Catalogue.translated("Status")

    Rectangle {
        height: Theme.borderWidth
        color: Theme.line
        anchors {
            left: parent.left
            right: parent.right
            top: parent.top
        }
    }
    RowLayout {
        id: row
        spacing: Theme.gapLarge
        anchors {
            left: parent.left
            right: parent.right
            verticalCenter: parent.verticalCenter
            leftMargin: Theme.margin
            rightMargin: Theme.margin
        }

        StatusText {
            text: root.model.locationCount
        }
        StatusText {
            text: root.model.checkState
            Layout.fillWidth: !stop.visible
            Layout.maximumWidth: stop.visible ? implicitWidth : -1
        }
        LinkButton {
            id: stop
            text: Catalogue.translated("Stop")
            visible: root.model.isChecking
            onClicked: root.model.stopCheck()
        }
        Item {
            visible: stop.visible
            Layout.fillWidth: true
        }
        StatusText {
            text: root.model.schedule
        }
    }
}
