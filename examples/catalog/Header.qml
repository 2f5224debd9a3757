// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import vorrel.data.Core 1.0
import "../kit"

// What is open, from where, and whether something is going on.
Rectangle {
    id: header

    required property EditContext context
    required property Catalogue catalogue

    // Without the user and the password that it may hold.
    readonly property string place: String(context.serviceUrl).replace(/\/\/[^@\/]*@/, "//")
                                    .replace(/\/*$/, "") + "/" + context.database

    implicitHeight: 76
    color: Theme.surface

    RowLayout {
        anchors.fill: parent
        anchors.leftMargin: 3 * Theme.unit
        anchors.rightMargin: 3 * Theme.unit
        spacing: 2 * Theme.unit

        ColumnLayout {
            spacing: 3

            Text {
                text: header.catalogue.title || "Catalogue"
                font.pixelSize: Theme.titleSize
                font.weight: Font.DemiBold
                color: Theme.ink
                elide: Text.ElideRight
                Layout.fillWidth: true
            }

            Text {
                visible: text.length > 0
                text: header.catalogue.description
                font.pixelSize: Theme.captionSize
                color: Theme.inkSoft
                elide: Text.ElideRight
                Layout.fillWidth: true
            }
        }

        BusyIndicator {
            visible: header.context.busy
            running: header.context.busy
            implicitWidth: 28
            implicitHeight: 28
        }

        EditButtons {
            context: header.context
        }

        // How far saving has come.
        Rectangle {
            readonly property SaveQueue queue: header.context.saveQueue

            visible: queue !== null
            implicitWidth: 100
            implicitHeight: 6
            radius: 3
            color: Theme.line

            Rectangle {
                width: parent.queue ? parent.width * parent.queue.progress : 0
                height: parent.height
                radius: parent.radius
                color: Theme.accent
            }
        }

        Rectangle {
            visible: header.context.hasLocalChanges && !header.context.saveQueue
            implicitWidth: changes.implicitWidth + 20
            implicitHeight: changes.implicitHeight + 10
            radius: height / 2
            color: Theme.editedSoft

            Text {
                id: changes
                anchors.centerIn: parent
                text: "Unsaved changes"
                font.pixelSize: Theme.captionSize
                color: Theme.edited
            }
        }

        ColumnLayout {
            spacing: 3

            Text {
                visible: header.catalogue.progress === "ready"
                text: header.catalogue.documents.length + " documents"
                font.pixelSize: Theme.captionSize
                color: Theme.inkSoft
                Layout.alignment: Qt.AlignRight
            }

            Text {
                text: header.place
                font.pixelSize: Theme.captionSize
                color: Theme.inkFaint
                elide: Text.ElideMiddle
                Layout.maximumWidth: 240
                Layout.alignment: Qt.AlignRight
            }
        }
    }

    Rectangle {
        anchors.bottom: parent.bottom
        width: parent.width
        height: 1
        color: Theme.line
    }
}
