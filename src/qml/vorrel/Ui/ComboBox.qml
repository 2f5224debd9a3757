// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Templates 2.15 as T

// One of several texts; the model is an array of them.
T.ComboBox {
    id: box

    implicitWidth: Theme.fieldWidth
    implicitHeight: Theme.controlHeight
    leftPadding: Theme.spacing
    rightPadding: Theme.spacing
    font.pixelSize: Theme.fontSize
    opacity: enabled ? 1 : 0.5

    contentItem: Text {
        text: box.displayText
        font: box.font
        color: Theme.ink
        elide: Text.ElideRight
        verticalAlignment: Text.AlignVCenter
        rightPadding: box.indicator.width + Theme.spacing
    }

    indicator: Text {
        x: box.width - width - Theme.spacing
        anchors.verticalCenter: parent.verticalCenter
        text: "▾"
        font: box.font
        color: Theme.inkSoft
    }

    background: Frame {
        focused: box.activeFocus
    }

    delegate: ComboRow { }

    popup: T.Popup {
        y: box.height
        width: box.width
        implicitHeight: Math.min(contentItem.implicitHeight, 8 * Theme.controlHeight) + 2
        padding: 1

        contentItem: ListView {
            implicitHeight: contentHeight
            clip: true
            model: box.delegateModel
            currentIndex: box.highlightedIndex
        }

        background: Rectangle {
            color: Theme.surface
            border.color: Theme.line
        }
    }
}
