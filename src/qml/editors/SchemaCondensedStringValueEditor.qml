// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Layouts 1.15
import vorrel.Ui 1.0 as Ui
import "parts"

// Edits a text in one line. One that has several is only shown: they would be lost.
ValueEditor {
    id: editor

    readonly property bool single: !/[\r\n]/.test(edited.text)

    TextEditor {
        edited: editor.edited
        live: true
        emptyClears: false
        visible: editor.single
    }

    Ui.TextField {
        objectName: "lines"
        text: editor.edited.text.replace(/\r\n|\r|\n/g, " ↵ ")
        readOnly: true
        visible: !editor.single
        Layout.fillWidth: true
    }
}
