// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Layouts 1.15
import "../kit"

// What the field below is.
Text {
    font.pixelSize: Theme.captionSize
    color: Theme.inkFaint
    Layout.topMargin: Theme.unit
}
