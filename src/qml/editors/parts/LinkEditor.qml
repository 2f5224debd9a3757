// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Layouts 1.15
import vorrel.data.Core 1.0
import vorrel.Ui 1.0 as Ui

// A field for a document.
Ui.DocumentField {
    required property SchemaValue edited

    document: edited.value instanceof Document ? edited.value as Document : null
    context: edited.store ? edited.store.context : null
    readOnly: edited.readOnly
    onRequested: document => edited.edit(document)
    onCleared: edited.clear()
    Layout.fillWidth: true
}
