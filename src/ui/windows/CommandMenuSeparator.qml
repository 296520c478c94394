import QtQuick
import QtQuick.Controls.Basic
import Brindle.Theme

MenuSeparator {
    topPadding: Theme.gapTiny
    bottomPadding: Theme.gapTiny

    contentItem: Rectangle {
        implicitHeight: Theme.borderWidth
        color: Theme.line
    }
}
