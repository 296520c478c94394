import QtQuick
import QtQuick.Layouts
import Brindle.Models
import Brindle.Parts
import Brindle.Theme

// The ways out of a phase: to the next and the one before, and out of the setup altogether.
Rectangle {
    id: root

    required property SetupModel model
    required property real contentWidth
    readonly property alias goOn: goOn

    implicitHeight: column.implicitHeight + 2 * Theme.gap
    color: Theme.ground

    Rectangle {
        height: Theme.borderWidth
        color: Theme.line
        anchors {
            left: parent.left
            right: parent.right
            top: parent.top
        }
    }
    ColumnLayout {
        id: column

        width: root.contentWidth
        anchors.centerIn: parent
        spacing: Theme.gap

        RowLayout {
            Layout.fillWidth: true
            visible: message.text !== ""
            spacing: Theme.gapSmall

            Symbol {
                Layout.alignment: Qt.AlignTop
                name: "warning"
                color: Theme.warning
            }
            Text {
                id: message

                Layout.fillWidth: true
                text: root.model.message
                font: Theme.body
                color: Theme.text
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignLeft
                Accessible.role: Accessible.AlertMessage
                Accessible.name: text
            }
        }
        RowLayout {
            Layout.fillWidth: true
            spacing: Theme.gapLarge

            Flow {
                Layout.fillWidth: true
                Layout.alignment: Qt.AlignVCenter
                spacing: Theme.gap

                LinkButton {
                    text: Catalogue.translated("Explore example history")
                    onClicked: root.model.showExample()
                }
                LinkButton {
                    text: Catalogue.translated("Show your history")
                    visible: root.model.hasPages
                    onClicked: root.model.showPages()
                }
            }
            RowLayout {
                spacing: Theme.gapSmall

                PushButton {
                    text: Catalogue.translated("Back")
                    visible: root.model.canGoBack
                    onClicked: root.model.goBack()
                }
                PushButton {
                    text: Catalogue.translated("Show the Overview")
                    visible: root.model.canShowPages
                    onClicked: root.model.showPages()
                }
                PushButton {
                    id: stop
                    text: Catalogue.translated("Stop")
                    visible: root.model.phase === SetupModel.FirstCheck && root.model.check.isRunning
                    onClicked: root.model.check.stop()
                }
                PushButton {
                    id: goOn
                    text: root.model.goOnTitle
                    visible: !stop.visible
                    enabled: root.model.canGoOn
                    isDefault: true
                    onClicked: root.model.goOn()
                }
            }
        }
    }
}
