// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import vorrel.Ui 1.0 as Ui
import "parts"

// Edits a day, by its text or in a calendar.
ValueEditor {
    id: editor

    TextEditor {
        edited: editor.edited
        placeholderText: "YYYY-MM-DD"
    }

    Ui.MonthView {
        day: editor.edited.text
        readOnly: editor.edited.readOnly
        onRequested: day => editor.edited.edit(day)
    }
}
