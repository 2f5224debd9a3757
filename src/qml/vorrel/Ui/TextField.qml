// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Templates 2.15 as T

// A line of text. A text that cannot be taken is marked by error.
T.TextField {
    id: field

    property bool error: false

    implicitWidth: Theme.fieldWidth
    implicitHeight: Theme.controlHeight
    leftPadding: Theme.spacing
    rightPadding: Theme.spacing
    verticalAlignment: TextInput.AlignVCenter
    font.pixelSize: Theme.fontSize
    color: enabled && !readOnly ? Theme.ink : Theme.inkSoft
    selectionColor: Theme.accent
    selectedTextColor: Theme.accentInk
    placeholderTextColor: Theme.inkFaint
    selectByMouse: true
    clip: true
    onTextChanged: {
        if (!activeFocus)
            cursorPosition = 0 // shows the beginning
    }

    background: Frame {
        focused: field.activeFocus
        error: field.error
        enabled: !field.readOnly

        Text {
            anchors.fill: parent
            leftPadding: field.leftPadding
            visible: field.text === "" && field.preeditText === ""
            text: field.placeholderText
            font: field.font
            color: field.placeholderTextColor
            elide: Text.ElideRight
            verticalAlignment: Text.AlignVCenter
        }
    }
}
