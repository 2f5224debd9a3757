// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import "../kit"

// Something that a block is or is not.
AbstractButton {
    id: choice

    leftPadding: 12
    rightPadding: 12
    topPadding: 6
    bottomPadding: 6
    font.pixelSize: Theme.bodySize
    hoverEnabled: true

    contentItem: Text {
        text: choice.text
        font: choice.font
        color: choice.checked ? Theme.accent : Theme.inkSoft
    }

    background: Rectangle {
        radius: Theme.radius
        color: choice.checked ? Theme.accentSoft : choice.hovered ? Theme.hover : Theme.surface
        border.color: choice.checked || choice.visualFocus ? Theme.accent : Theme.line
    }
}
