// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Layouts 1.15
import vorrel.data.Core 1.0
import vorrel.Ui 1.0 as Ui

// A field for a number within the bounds of its variable.
Ui.NumberField {
    required property SchemaValue edited

    value: Number(edited.value) || 0
    readOnly: edited.readOnly
    onRequested: number => edited.edit(number)
    Layout.fillWidth: true
}
