// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Layouts 1.15
import vorrel.data.Core 1.0

// What the last upload could not save, and why. Gone with the next one.
Rectangle {
    id: banner

    required property Context context

    visible: context.saveFailures.length > 0
    implicitHeight: content.implicitHeight + 2 * Theme.unit
    color: Theme.editedSoft

    ColumnLayout {
        id: content
        anchors.verticalCenter: parent.verticalCenter
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: 3 * Theme.unit
        anchors.rightMargin: 3 * Theme.unit

        Repeater {
            model: banner.context.saveFailures

            delegate: Text {
                required property var modelData
                Layout.fillWidth: true
                text: "Not saved: “" + (modelData.document ? modelData.document.label
                                                           : modelData.documentId)
                    + "”. " + modelData.reason
                    + (modelData.status ? " (" + modelData.status + ")" : "")
                textFormat: Text.PlainText
                font.pixelSize: Theme.bodySize
                color: Theme.edited
                wrapMode: Text.Wrap
            }
        }
    }
}
