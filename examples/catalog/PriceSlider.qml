// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import "../kit"

// The price of a product. However long it is dragged, that is one step of undo.
Slider {
    id: slider

    property var product: null

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

    // Dragging writes the value, too, and so would end a binding.
    function follow() {
        if (product && !pressed)
            value = product.price
    }

    onProductChanged: follow()

    Connections {
        target: slider.product
        function onPricesChanged() {
            slider.follow()
        }
    }
}
