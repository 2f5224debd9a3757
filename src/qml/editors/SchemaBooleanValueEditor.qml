// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import vorrel.Ui 1.0 as Ui
import "parts"

// Edits a value that is true or false.
ValueEditor {
    id: editor

    Ui.Switch {
        objectName: "input"
        enabled: !editor.edited.readOnly
        checked: editor.edited.value === true
        onToggled: {
            editor.edited.edit(checked)
            checked = Qt.binding(() => editor.edited.value === true)
        }
    }
}
