import QtQuick
import QtQuick.Layouts
import Brindle.Models
import Brindle.Parts

// What the user is asked and told before the tracked locations are changed, one sheet at a time. Folders are
// chosen in the system's own dialog.
Item {
    id: root

    required property LocationActionsModel model

    DialogSheet {
        title: root.model.title
        text: root.model.text
        visible: root.model.sheet === LocationActionsModel.ChoosingDrive
        onRejected: root.model.dismiss()

        details: DriveChoices {
            Layout.fillWidth: true
            model: root.model
            visible: count > 0
        }

        PushButton {
            focus: true
            text: root.model.dismissTitle
            onClicked: root.model.dismiss()
        }
    }
    DialogSheet {
        title: root.model.title
        text: root.model.text
        visible: root.model.sheet === LocationActionsModel.Asking || root.model.sheet === LocationActionsModel.Telling
        onRejected: root.model.dismiss()
        onOpened: (confirm.isDefault ? confirm : dismiss).forceActiveFocus(Qt.TabFocusReason)

        PushButton {
            id: confirm

            isDefault: visible && !root.model.isDestructive
            text: root.model.confirmTitle
            visible: text.length > 0
            onClicked: root.model.confirm()
        }
        PushButton {
            id: dismiss

            isDefault: !confirm.isDefault
            text: root.model.dismissTitle
            onClicked: root.model.dismiss()
        }
    }
}
