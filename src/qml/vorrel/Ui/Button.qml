// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Templates 2.15 as T

// A word, or a sign, to press.
T.Button {
    id: button

    implicitWidth: Math.max(implicitHeight, implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Theme.controlHeight
    leftPadding: Theme.spacing
    rightPadding: Theme.spacing
    font.pixelSize: Theme.fontSize
    hoverEnabled: true
    opacity: enabled ? 1 : 0.5

    contentItem: Text {
        text: button.text
        font: button.font
        color: button.checked ? Theme.accentInk : Theme.ink
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
    }

    background: Rectangle {
        radius: Theme.radius
        color: button.checked ? Theme.accent
                              : button.down || button.hovered ? Theme.hover : Theme.surface
        border.color: button.visualFocus ? Theme.accent : Theme.line
    }
}
