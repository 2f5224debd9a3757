// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import "../kit"

// Lets the user choose one of a few values.
Flow {
    id: chips

    // Each is { text, value, count }. Nothing is shown for a count that is missing.
    required property var choices
    property var value

    spacing: 6

    Repeater {
        model: chips.choices

        delegate: AbstractButton {
            id: chip

            required property var modelData
            readonly property var chips: parent
            readonly property bool chosen: modelData.value === chips.value

            text: modelData.count === undefined ? modelData.text
                                                : modelData.text + "  " + modelData.count
            leftPadding: 10
            rightPadding: 10
            topPadding: 4
            bottomPadding: 4
            font.pixelSize: Theme.captionSize
            hoverEnabled: true
            onClicked: chips.value = modelData.value

            contentItem: Text {
                text: chip.text
                textFormat: Text.PlainText
                font: chip.font
                color: chip.chosen ? "white" : Theme.inkSoft
            }

            background: Rectangle {
                radius: height / 2
                color: chip.chosen ? Theme.accent : chip.hovered ? Theme.accentSoft : Theme.surface
                border.color: chip.chosen || chip.visualFocus ? Theme.accent : Theme.line
            }
        }
    }
}
