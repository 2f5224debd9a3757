// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Layouts 1.15
import vorrel.Ui 1.0 as Ui

// Moves a time by minutes: modelData has them, and the editor of the time.
Ui.Button {
    required property var modelData
    readonly property int minutes: modelData.minutes

    objectName: "step" + minutes
    text: (minutes < 0 ? "−" : "+") + (Math.abs(minutes) === 60 ? "1 h" : "5 min")
    enabled: !modelData.editor.edited.readOnly
    onClicked: modelData.editor.step(minutes)
    Layout.fillWidth: true
}
