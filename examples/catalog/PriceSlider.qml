// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import vorrel.data.Core 1.0

// The price of a product. However long it is dragged, that is one step of undo.
Slider {
    id: slider

    property Product product: null

    visible: product !== null
    enabled: visible && !product.deleted
    from: 0
    to: 200
    stepSize: 0.1
    onPressedChanged: {
        if (pressed)
            Session.catalogue.context.beginRecordChanges()
        else
            Session.catalogue.context.endRecordChanges()
    }
    onMoved: product.price = Math.round(value * 10) / 10

    Text {
        anchors.bottom: slider.top
        anchors.left: slider.left
        anchors.leftMargin: slider.leftPadding
        text: "Price"
        font.pixelSize: Theme.captionSize
        color: Theme.inkFaint
    }

    // Written by dragging, too, so that a plain binding would end.
    Binding {
        target: slider
        property: "value"
        value: slider.product ? slider.product.price : 0
        when: !slider.pressed
        restoreMode: Binding.RestoreNone
    }
}
