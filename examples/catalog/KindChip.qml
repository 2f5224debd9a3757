// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import "../kit"

// Chooses the documents of one type and of the types below it; no type means all.
AbstractButton {
    id: chip

    required property string kind
    required property var documents
    readonly property int count: documents.filter(accepts).length

    function accepts(document): bool {
        return kind === "" || document.hasType(kind)
    }

    checkable: true
    leftPadding: 10
    rightPadding: 10
    topPadding: 4
    bottomPadding: 4
    font.pixelSize: Theme.captionSize
    hoverEnabled: true

    contentItem: Text {
        text: chip.text + "  " + chip.count
        font: chip.font
        color: chip.checked ? "white" : Theme.inkSoft
    }

    background: Rectangle {
        radius: height / 2
        color: chip.checked ? Theme.accent : chip.hovered ? Theme.accentSoft : Theme.surface
        border.color: chip.checked || chip.visualFocus ? Theme.accent : Theme.line
    }
}
