// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Templates 2.15 as T

// Several lines of text.
T.TextArea {
    id: area

    implicitWidth: Theme.fieldWidth
    implicitHeight: Math.max(3 * Theme.controlHeight, contentHeight + topPadding + bottomPadding)
    padding: Theme.spacing
    font.pixelSize: Theme.fontSize
    color: enabled && !readOnly ? Theme.ink : Theme.inkSoft
    selectionColor: Theme.accent
    selectedTextColor: Theme.accentInk
    selectByMouse: true
    wrapMode: TextEdit.Wrap

    background: Frame {
        focused: area.activeFocus
        enabled: !area.readOnly
    }
}
