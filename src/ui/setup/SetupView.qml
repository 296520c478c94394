import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Brindle.Models
import Brindle.Pages
import Brindle.Parts
import Brindle.Theme

// The way from the first start to the pages: a phase at a time, with the ways out of it below.
FocusScope {
    id: root

    required property SetupModel model
    required property StartupChoices startup
    required property int widthClass

    readonly property int phase: root.model.phase
    readonly property bool isRunning: root.phase === SetupModel.FirstCheck && root.model.check.isRunning
    readonly property real contentWidth: Math.min(root.width - 2 * Theme.margin, Theme.scaled(720))
    readonly property Item focused: root.Window.activeFocusItem
    property bool isKeyboardUsed: false

    // The keyboard comes to what goes on, or brings that about; never to what stops a check.
    function focusMain() {
        if (root.isRunning) {
            if (root.focused !== root)
                root.focused.focus = false;
            return;
        }
        const reason = root.isKeyboardUsed ? Qt.TabFocusReason : Qt.OtherFocusReason;
        if (footer.goOn.enabled)
            footer.goOn.forceActiveFocus(reason);
        else
            (phaseView.item as Item).nextItemInFocusChain().forceActiveFocus(reason);
    }

    Accessible.role: Accessible.Pane
    Accessible.name: root.model.stepText + ": " + root.model.title
    onPhaseChanged: {
        scroll.contentY = 0;
        later.restart();
    }
    onIsRunningChanged: later.restart()
    onFocusedChanged: {
        const control = root.focused as T.Control;
        if (control !== null)
            root.isKeyboardUsed = control.visualFocus;
        // What had the keyboard is gone with what it stood on.
        if ((root.focused === root || root.focused === phaseView) && !root.isRunning)
            later.restart();
    }
    Component.onCompleted: root.forceActiveFocus()
    onVisibleChanged: {
        if (root.visible)
            root.forceActiveFocus();
    }
    Keys.onReturnPressed: event => event.isAutoRepeat || root.model.goOn()
    Keys.onEnterPressed: event => event.isAutoRepeat || root.model.goOn()
    Keys.onEscapePressed: event => {
        event.accepted = root.model.hasPages;
        if (root.model.hasPages)
            root.model.showPages();
    }

    // When what is shown has changed as a whole. A menu or sheet in front keeps the keyboard.
    Timer {
        id: later
        interval: 0
        onTriggered: {
            if (root.activeFocus)
                root.focusMain();
        }
    }
    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        PageScroll {
            id: scroll

            Layout.fillWidth: true
            Layout.fillHeight: true
            widthClass: root.widthClass

            ColumnLayout {
                Layout.alignment: Qt.AlignHCenter
                Layout.maximumWidth: root.contentWidth
                spacing: Theme.gap

                StepIndicator {
                    Layout.fillWidth: true
                    step: root.model.step
                    count: root.model.stepCount
                    text: root.model.stepText
                }
                PageHeader {
                    Layout.fillWidth: true
                    title: root.model.title
                }
                Text {
                    Layout.fillWidth: true
                    text: root.model.explanation
                    font: Theme.body
                    color: Theme.textSecondary
                    wrapMode: Text.Wrap
                    horizontalAlignment: Text.AlignLeft
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                }
                Loader {
                    id: phaseView

                    Layout.fillWidth: true
                    sourceComponent: [welcome, locations, startup, firstCheck][root.phase]
                }
            }
        }
        SetupFooter {
            id: footer

            Layout.fillWidth: true
            contentWidth: root.contentWidth
            model: root.model
        }
    }

    Component {
        id: welcome
        WelcomePhase {
            model: root.model
        }
    }
    Component {
        id: locations
        LocationsPhase {
            model: root.model
        }
    }
    Component {
        id: startup
        StartupSetupView {
            model: root.model
            startup: root.startup
        }
    }
    Component {
        id: firstCheck
        FirstCheckPhase {
            model: root.model
        }
    }

    // What is to be known before a choice is stored.
    DialogSheet {
        id: sheet

        readonly property string question: root.model.locations.question

        title: root.model.locations.questionTitle
        text: sheet.question
        visible: sheet.question !== ""
        onRejected: root.model.locations.answer(false)

        PushButton {
            text: Catalogue.translated("Include")
            focus: true
            isDefault: true
            onClicked: root.model.locations.answer(true)
        }
        PushButton {
            text: Catalogue.translated("Cancel")
            onClicked: root.model.locations.answer(false)
        }
    }
}
