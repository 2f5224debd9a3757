// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import "parts"

// Edits a number with decimals, with a slider if its bounds are near enough to each other.
SchemaCondensedRealValueEditor {
    id: editor

    NumberSlider {
        edited: editor.edited
        from: editor.range ? editor.range.minimum : 0
        to: editor.range ? editor.range.maximum : 0
        stepSize: Math.pow(10, -editor.decimals)
        snapMode: NumberSlider.SnapAlways
    }
}
