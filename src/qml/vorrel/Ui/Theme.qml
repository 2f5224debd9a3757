// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
pragma Singleton
import QtQuick 2.15

// Colours and sizes of all controls.
QtObject {
    readonly property color surface: "#ffffff"
    readonly property color surfaceDisabled: "#f5f4f0"
    readonly property color hover: "#f0efea"
    readonly property color line: "#d3d0c7"
    readonly property color ink: "#1d2b28"
    readonly property color inkSoft: "#5d6b67"
    readonly property color inkFaint: "#8b9692"
    readonly property color accent: "#2f5d50"
    readonly property color accentInk: "#ffffff"
    readonly property color error: "#a3423a"

    readonly property int spacing: 8
    readonly property int radius: 5
    readonly property int fontSize: 13
    readonly property int controlHeight: 30
    readonly property int fieldWidth: 200
}
