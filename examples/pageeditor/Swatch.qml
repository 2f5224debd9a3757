// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import vorrel.data.Core 1.0
import "../kit"

// A colour that a block can have.
Rectangle {
    id: swatch

    required property DataStruct block

    width: 28
    height: 28
    radius: 14
    border.width: Qt.colorEqual(swatch.block.$.tint || "white", swatch.color) ? 3 : 0
    border.color: Theme.ink

    TapHandler {
        onTapped: swatch.block.$.tint = swatch.color
    }
}
