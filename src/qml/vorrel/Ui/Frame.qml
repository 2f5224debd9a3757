// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15

// The box around whatever can be edited.
Rectangle {
    property bool focused: false
    property bool error: false

    implicitWidth: Theme.fieldWidth
    implicitHeight: Theme.controlHeight
    radius: Theme.radius
    color: enabled ? Theme.surface : Theme.surfaceDisabled
    border.color: error ? Theme.error : focused ? Theme.accent : Theme.line
    border.width: focused || error ? 2 : 1
}
