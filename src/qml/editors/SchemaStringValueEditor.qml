// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Layouts 1.15
import vorrel.data.Core 1.0
import vorrel.Ui 1.0 as Ui
import "parts"

// Edits a text, of several lines if its variable has them.
ValueEditor {
    id: editor

    readonly property SchemaStringVariable string: variable as SchemaStringVariable
    readonly property bool multiline: string !== null && string.multiline

    TextEditor {
        edited: editor.edited
        live: true
        emptyClears: false
        visible: !editor.multiline
    }

    Ui.TextArea {
        objectName: "lines"
        text: editor.edited.text
        readOnly: editor.edited.readOnly
        visible: editor.multiline
        textFormat: TextEdit.PlainText
        onTextChanged: {
            if (activeFocus && text !== editor.edited.text)
                editor.edited.edit(text)
        }
        Layout.fillWidth: true
    }
}
