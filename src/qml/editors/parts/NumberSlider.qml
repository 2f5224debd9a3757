// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Layouts 1.15
import vorrel.data.Core 1.0
import vorrel.Ui 1.0 as Ui

// A slider beside a field for a number, if the bounds are near enough to each other. However long it
// is dragged, that is one step of undo.
Ui.Slider {
    id: slider

    required property SchemaValue edited
    readonly property real current: Number(edited.value) || 0

    objectName: "slider"
    visible: to > from && to - from <= 10000 * stepSize
    enabled: visible && !edited.readOnly
    live: true
    value: current
    onMoved: edited.edit(value)
    onPressedChanged: {
        if (pressed)
            edited.store.beginRecordChanges()
        else
            edited.store.endRecordChanges()
    }
    onCurrentChanged: {
        if (!pressed)
            value = current // dragging ends a binding
    }
    Layout.fillWidth: true
}
