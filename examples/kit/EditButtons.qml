// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import vorrel.data.Core 1.0

// The buttons for undo, redo and save.
Row {
    id: buttons

    required property EditContext context

    spacing: Theme.unit

    ActionButton {
        text: "Undo"
        enabled: buttons.context.canUndo
        onClicked: buttons.context.undo()
    }

    ActionButton {
        text: "Redo"
        enabled: buttons.context.canRedo
        onClicked: buttons.context.redo()
    }

    ActionButton {
        text: "Save"
        primary: true
        enabled: buttons.context.canSave
        onClicked: buttons.context.saveLocalChanges()
    }
}
