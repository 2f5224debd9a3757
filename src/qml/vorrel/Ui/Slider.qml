// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Templates 2.15 as T

// A number by the place of a handle.
T.Slider {
    id: slider

    implicitWidth: Theme.fieldWidth
    implicitHeight: Theme.controlHeight
    padding: Theme.spacing
    opacity: enabled ? 1 : 0.5

    background: Rectangle {
        x: slider.leftPadding
        y: (slider.height - height) / 2
        width: slider.availableWidth
        height: 4
        radius: 2
        color: Theme.line

        Rectangle {
            width: slider.visualPosition * parent.width
            height: parent.height
            radius: 2
            color: Theme.accent
        }
    }

    handle: Rectangle {
        x: slider.leftPadding + slider.visualPosition * (slider.availableWidth - width)
        y: (slider.height - height) / 2
        width: 16
        height: 16
        radius: 8
        color: slider.pressed ? Theme.hover : Theme.surface
        border.color: slider.visualFocus || slider.pressed ? Theme.accent : Theme.inkFaint
    }
}
