// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Layouts 1.15
import vorrel.data.Core 1.0
import vorrel.Ui 1.0 as Ui

// A field for the text form of a value. A text that cannot be a value is marked and not taken.
Ui.TextField {
    id: field

    required property SchemaValue edited

    // Whether each key counts, and not only the end of typing.
    property bool live: false

    // Whether an empty field brings the default value back, and is not a value itself.
    property bool emptyClears: true

    objectName: "input"
    text: edited.text
    readOnly: edited.readOnly
    Layout.fillWidth: true

    function commit() {
        if (readOnly || text === edited.text)
            return
        error = !(text === "" && emptyClears ? edited.clear() : edited.edit(text))
        if (!error && !live)
            follow() // the same value may have several texts
    }

    function follow() {
        error = false
        text = Qt.binding(() => field.edited.text)
    }

    onTextEdited: {
        error = false
        if (live)
            commit()
    }
    onEditingFinished: commit()
    Keys.onEscapePressed: follow()
}
