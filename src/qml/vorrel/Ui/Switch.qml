// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Templates 2.15 as T

// On or off.
T.Switch {
    id: control

    implicitWidth: indicator.width + leftPadding + rightPadding
    implicitHeight: Theme.controlHeight
    opacity: enabled ? 1 : 0.5

    indicator: Rectangle {
        x: control.leftPadding
        anchors.verticalCenter: parent.verticalCenter
        width: 38
        height: 20
        radius: height / 2
        color: control.checked ? Theme.accent : Theme.line
        border.width: control.visualFocus ? 2 : 0
        border.color: Theme.ink

        Rectangle {
            x: control.checked ? parent.width - width - 2 : 2
            anchors.verticalCenter: parent.verticalCenter
            width: 16
            height: 16
            radius: 8
            color: Theme.surface

            Behavior on x {
                NumberAnimation { duration: 80 }
            }
        }
    }
}
