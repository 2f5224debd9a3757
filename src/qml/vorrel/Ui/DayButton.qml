// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15

// A day of a MonthView: modelData has its number, and the view.
Button {
    required property var modelData

    objectName: modelData.view.name(modelData.number)
    text: modelData.number
    padding: 0
    width: Theme.controlHeight
    enabled: !modelData.view.readOnly
    checked: objectName === modelData.view.day
    onClicked: modelData.view.requested(objectName)
}
