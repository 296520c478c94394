import QtQuick
import QtQuick.Layouts
import Brindle.Models
import Brindle.Parts
import Brindle.Theme

// An export from its plan to its end, one sheet after the other. The system's own dialog asks where to save.
Item {
    id: root

    required property ExportModel model

    DialogSheet {
        title: Catalogue.translated("Export a statement")
        text: root.model.summary
        visible: root.model.step === ExportModel.Confirming
        onRejected: root.model.dismiss()

        PushButton {
            text: Catalogue.translated("Choose where to save…")
            isDefault: true
            focus: true
            onClicked: root.model.confirm()
        }
        PushButton {
            text: Catalogue.translated("Cancel")
            onClicked: root.model.dismiss()
        }
    }
    DialogSheet {
        title: Catalogue.translated("Writing the statement…")
        text: root.model.progressText
        visible: root.model.step === ExportModel.WritingLong
        onRejected: root.model.dismiss()

        details: StackedBar {
            shares: [root.model.progress]
            tones: [Theme.accent]
            Layout.fillWidth: true
            Accessible.ignored: false
            Accessible.role: Accessible.ProgressBar
            Accessible.name: root.model.progressText
        }

        PushButton {
            text: Catalogue.translated("Stop")
            focus: true
            onClicked: root.model.stop()
        }
    }
    DialogSheet {
        title: root.model.finishedText
        text: root.model.finishedPath
        visible: root.model.step === ExportModel.Finished
        onRejected: root.model.dismiss()

        PushButton {
            text: Catalogue.translated("Done")
            isDefault: true
            focus: true
            onClicked: root.model.dismiss()
        }
        PushButton {
            text: root.model.revealText
            onClicked: root.model.reveal()
        }
    }
    DialogSheet {
        title: Catalogue.translated("Export a statement")
        text: root.model.step === ExportModel.Failed ? root.model.failureText : root.model.summary
        visible: root.model.step === ExportModel.Failed || root.model.step === ExportModel.NothingToExport
        onRejected: root.model.dismiss()

        PushButton {
            text: Catalogue.translated("Close")
            isDefault: true
            focus: true
            onClicked: root.model.dismiss()
        }
    }
}
