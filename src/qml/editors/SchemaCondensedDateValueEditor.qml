// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import "parts"

// Edits a day in one line.
ValueEditor {
    id: editor

    TextEditor {
        edited: editor.edited
        placeholderText: "YYYY-MM-DD"
    }
}
