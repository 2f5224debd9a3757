// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Layouts 1.15
import vorrel.data.Core 1.0
import vorrel.Ui 1.0 as Ui
import "parts"

// Edits the choice of one of several entries.
ValueEditor {
    id: editor

    readonly property SchemaEnumerationVariable choice: variable as SchemaEnumerationVariable
    readonly property var entries: choice ? Array.from(choice.entries) : []
    // Entries may have been removed since the value was set.
    readonly property int current: edited.value >= 0 && edited.value < entries.length
        ? edited.value : -1

    Ui.ComboBox {
        objectName: "input"
        enabled: !editor.edited.readOnly
        model: editor.entries.map(entry => entry.name)
        currentIndex: editor.current
        onActivated: {
            editor.edited.edit(currentIndex)
            currentIndex = Qt.binding(() => editor.current)
        }
        Layout.fillWidth: true
    }
}
