// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import vorrel.data.Core 1.0

// The keys for undo, redo and save.
Item {
    id: shortcuts

    required property EditContext context

    Shortcut {
        sequence: "Ctrl+Z"
        enabled: shortcuts.context.canUndo
        onActivated: shortcuts.context.undo()
    }

    Shortcut {
        sequence: "Ctrl+Shift+Z"
        enabled: shortcuts.context.canRedo
        onActivated: shortcuts.context.redo()
    }

    Shortcut {
        sequence: "Ctrl+S"
        enabled: shortcuts.context.canSave
        onActivated: shortcuts.context.saveLocalChanges()
    }
}
