// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import vorrel.data.Core 1.0
import "../kit"

// The file of an image document, once it is here; nothing at all without one.
Rectangle {
    id: photo

    property LinkedDocument document: null

    visible: loader.status !== AttachmentLoader.Null
    implicitWidth: 240
    implicitHeight: 150
    radius: Theme.radius
    color: Theme.surface
    border.color: Theme.line

    AttachmentLoader {
        id: loader
        document: photo.document
    }

    Image {
        source: loader.url
        anchors.fill: parent
        anchors.margins: 1
        fillMode: Image.PreserveAspectFit
        asynchronous: true
        cache: false // what is not shown needs no memory
    }

    Text {
        visible: loader.status !== AttachmentLoader.Ready
        text: loader.error || "Loading…"
        font.pixelSize: Theme.bodySize
        color: Theme.inkFaint
        anchors.centerIn: parent

        TapHandler {
            onTapped: loader.reload()
        }
    }
}
