// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
pragma Singleton
import QtQuick 2.15

// Colours and sizes, so that they exist once.
QtObject {
    readonly property color background: "#f5f4f0"
    readonly property color surface: "#ffffff"
    readonly property color line: "#e2e0d9"
    readonly property color ink: "#1d2b28"
    readonly property color inkSoft: "#5d6b67"
    readonly property color inkFaint: "#8b9692"
    readonly property color accent: "#2f5d50"
    readonly property color accentSoft: "#e6eeea"
    readonly property color hover: "#faf9f6"
    readonly property color edited: "#9a6410"
    readonly property color editedSoft: "#fbf0da"
    readonly property color removed: "#a3423a"
    readonly property color removedSoft: "#f8e7e4"

    readonly property int unit: 8
    readonly property int radius: 6

    readonly property int captionSize: 11
    readonly property int bodySize: 13
    readonly property int titleSize: 17
    readonly property int headlineSize: 24

    // The mark of a kind of document.
    function typeColor(type: string): color {
        switch (type.split(":")[0]) {
        case "device": return "#b86f3c"
        case "keyvaluestore": return "#7b6aa8"
        case "location": return "#3f7ca3"
        case "tag": return "#b3902f"
        default: return accent
        }
    }
}
