// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Layouts 1.15
import vorrel.data.Core 1.0

// What is wrong at the moment, and when that is looked at again. Gone when all is well.
Rectangle {
    id: banner

    required property Context context
    readonly property ContextError error: context.primaryError

    visible: error !== null
    implicitHeight: content.implicitHeight + 2 * Theme.unit
    color: Theme.removedSoft

    RowLayout {
        id: content
        anchors.fill: parent
        anchors.margins: Theme.unit
        anchors.leftMargin: 3 * Theme.unit
        anchors.rightMargin: 3 * Theme.unit
        spacing: 2 * Theme.unit

        Text {
            text: banner.error ? banner.error.errorString + " (" + banner.error.errorCode + ")" : ""
            font.pixelSize: Theme.bodySize
            color: Theme.removed
            wrapMode: Text.Wrap
            Layout.fillWidth: true
        }

        Text {
            text: "Trying again in " + Math.ceil(banner.context.tryFixRemainingTime / 1000) + " s"
            font.pixelSize: Theme.captionSize
            color: Theme.inkSoft
        }

        ActionButton {
            text: "Try now"
            onClicked: banner.context.tryFixErrors()
        }
    }
}
