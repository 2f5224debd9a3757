// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Layouts 1.15
import vorrel.data.Core 1.0
import "../kit"

// Waits for a document that the database does not have. Once somebody makes it, here or anywhere
// in this Context, it shows up.
Rectangle {
    id: panel

    required property EditContext context
    readonly property LinkedDocument note: waiting.document as LinkedDocument

    function write() {
        context.beginRecordChanges()
        const note = context.createDocumentWithId("data:note", waiting.documentId)
        note.label = "Note of " + Qt.formatDate(new Date(), "d MMMM")
        note.setStructValue("note", "text", "Ring Utrecht about the new screens.")
        context.endRecordChanges()
    }

    implicitHeight: 76
    color: Theme.surface

    RootDocument {
        id: waiting
        context: panel.context
        // Asked for last: without a network it gets no answer, and documents that refer to others
        // are held back until everything that was asked for is answered.
        documentId: Session.catalogue && Session.catalogue.progress === "ready"
            ? "sample.note.today" : ""
    }

    Rectangle {
        width: parent.width
        height: 1
        color: Theme.line
    }

    RowLayout {
        anchors.fill: parent
        anchors.leftMargin: 3 * Theme.unit
        anchors.rightMargin: 3 * Theme.unit
        spacing: 1.5 * Theme.unit

        TypeMark {
            type: "data:note"
            hollow: panel.note === null
        }

        ColumnLayout {
            spacing: 3

            Text {
                text: panel.note ? panel.note.label : "Waiting for " + waiting.documentId
                font.pixelSize: Theme.bodySize
                color: Theme.ink
                elide: Text.ElideRight
                Layout.fillWidth: true
            }

            Text {
                text: panel.note ? (Session.isUnsaved(panel.note) ? "It exists in this window only, until it is saved."
                                                                  : "It is in the database.")
                                 : "The database has no such document. A RootDocument takes it up once it is made."
                font.pixelSize: Theme.captionSize
                color: Theme.inkSoft
                elide: Text.ElideRight
                Layout.fillWidth: true
            }
        }

        ActionButton {
            text: panel.note ? "Show it" : "Create it"
            primary: panel.note === null
            onClicked: panel.note ? Session.current = panel.note : panel.write()
        }
    }
}
