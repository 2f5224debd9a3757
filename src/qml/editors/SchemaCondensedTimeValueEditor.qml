// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import "parts"

// Edits a time of day in one line.
ValueEditor {
    id: editor

    TextEditor {
        edited: editor.edited
        placeholderText: "HH:MM:SS"
    }
}
