// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import vorrel.data.Core 1.0
import "parts"

// Edits a number with decimals in one line.
ValueEditor {
    id: editor

    readonly property SchemaRealVariable range: variable as SchemaRealVariable
    readonly property int decimals: range ? Math.max(0, Math.min(range.decimals, 15)) : 0

    NumberEditor {
        edited: editor.edited
        from: editor.range ? editor.range.minimum : 0
        to: editor.range ? editor.range.maximum : 0
        unit: editor.range ? editor.range.unit : ""
        decimals: editor.decimals
    }
}
