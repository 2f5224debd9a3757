// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import "parts"

// Edits a whole number in one line.
ValueEditor {
    id: editor

    readonly property var range: variable

    NumberEditor {
        edited: editor.edited
        from: editor.range ? editor.range.minimum : 0
        to: editor.range ? editor.range.maximum : 0
        unit: editor.range ? editor.range.unit : ""
    }
}
