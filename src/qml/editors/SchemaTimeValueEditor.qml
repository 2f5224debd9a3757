// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Layouts 1.15
import "parts"

// Edits a time of day, by its text or in steps of an hour and of five minutes.
ValueEditor {
    id: editor

    readonly property var steps: [-60, -5, 5, 60]

    function step(minutes) {
        const parts = (edited.text || "00:00:00").split(":").map(Number)
        const day = 24 * 60
        const moved = (parts[0] * 60 + parts[1] + minutes + day) % day
        const two = n => String(n).padStart(2, "0")
        edited.edit(two(Math.floor(moved / 60)) + ":" + two(moved % 60) + ":" + two(parts[2]))
    }

    TextEditor {
        edited: editor.edited
        placeholderText: "HH:MM:SS"
    }

    RowLayout {
        spacing: 2

        Repeater {
            model: editor.steps.map(minutes => ({ minutes: minutes, editor: editor }))
            delegate: TimeStep { }
        }
    }
}
