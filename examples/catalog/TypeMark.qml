// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import "../kit"

// The coloured dot of a kind of document; hollow while the document is not there.
Rectangle {
    property string type: ""
    property bool hollow: false
    readonly property color tone: Theme.typeColor(type)

    implicitWidth: 9
    implicitHeight: 9
    radius: width / 2
    color: hollow ? "transparent" : tone
    border.color: tone
    border.width: hollow ? 1.5 : 0
}
