// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Layouts 1.15
import vorrel.data.Core 1.0

// What all editors have in common: which value they edit.
ColumnLayout {
    id: editor

    property SchemaValueStore store: null
    property SchemaVariable variable: null

    readonly property SchemaValue edited: SchemaValue {
        store: editor.store
        variable: editor.variable
    }

    spacing: 4
}
