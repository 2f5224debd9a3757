// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Layouts 1.15
import vorrel.Ui 1.0 as Ui
import "parts"

// Edits a colour, by its text or from a row of colours.
ValueEditor {
    id: editor

    readonly property var colors: [
        "#000000", "#ffffff", "#8b9692", "#a3423a", "#d9822b", "#e3c34a",
        "#5b8c3e", "#2f5d50", "#3f7ca3", "#31456b", "#7b6aa8", "#b8648f"
    ]

    RowLayout {
        spacing: Ui.Theme.spacing

        Rectangle {
            implicitWidth: Ui.Theme.controlHeight
            implicitHeight: Ui.Theme.controlHeight
            radius: Ui.Theme.radius
            color: editor.edited.text || "transparent"
            border.color: Ui.Theme.line
        }

        TextEditor {
            edited: editor.edited
            placeholderText: "#rrggbb"
        }
    }

    Flow {
        spacing: 4
        Layout.fillWidth: true

        Repeater {
            model: editor.colors.map(color => ({ color: color, edited: editor.edited }))
            delegate: Swatch { }
        }
    }
}
