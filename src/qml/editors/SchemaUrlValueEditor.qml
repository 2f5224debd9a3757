// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import vorrel.Ui 1.0 as Ui

// Edits an address, and follows it.
SchemaCondensedUrlValueEditor {
    id: editor

    Ui.Button {
        objectName: "open"
        text: "Open"
        // Of what others have stored, nothing but pages of the web is opened.
        enabled: /^https?:\/\//.test(editor.edited.text)
        onClicked: Qt.openUrlExternally(editor.edited.text)
    }
}
