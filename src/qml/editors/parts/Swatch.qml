// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import vorrel.Ui 1.0 as Ui

// A colour to choose: modelData has it, and the value that it is for.
Rectangle {
    id: swatch

    required property var modelData
    readonly property bool chosen: modelData.edited.text === modelData.color

    objectName: modelData.color
    implicitWidth: 20
    implicitHeight: 20
    radius: 4
    color: modelData.color
    border.color: chosen ? Ui.Theme.ink : Ui.Theme.line
    border.width: chosen ? 2 : 1

    TapHandler {
        enabled: !swatch.modelData.edited.readOnly
        onTapped: swatch.modelData.edited.edit(swatch.modelData.color)
    }
}
