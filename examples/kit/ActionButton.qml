// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15

// A button with a word on it; the primary one of a place is filled.
AbstractButton {
    id: button

    property bool primary: false

    leftPadding: 14
    rightPadding: 14
    topPadding: 7
    bottomPadding: 7
    font.pixelSize: Theme.bodySize
    hoverEnabled: true
    opacity: enabled ? 1 : 0.5

    contentItem: Text {
        text: button.text
        font: button.font
        color: button.primary ? "white" : Theme.ink
        horizontalAlignment: Text.AlignHCenter
    }

    background: Rectangle {
        radius: Theme.radius
        color: button.primary ? Qt.darker(Theme.accent, button.down ? 1.2 : button.hovered ? 1.1 : 1)
                              : button.hovered ? Theme.hover : Theme.surface
        border.color: button.primary || button.visualFocus ? Theme.accent : Theme.line
    }
}
