// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import "../kit"

// A small word above a value.
Column {
    property alias label: above.text
    property alias text: below.text

    spacing: 3

    Text {
        id: above
        font.pixelSize: Theme.captionSize
        color: Theme.inkFaint
    }

    Text {
        id: below
        font.pixelSize: Theme.bodySize
        color: Theme.ink
    }
}
