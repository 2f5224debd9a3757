// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import vorrel.data.Core 1.0
import "fields.js" as Fields

// The documents that "sample.catalogue" names, in the order of the list. Loading it loads them,
// because it refers to them.
Item {
    id: catalogue

    required property EditContext context
    readonly property string documentId: root.documentId
    readonly property LinkedDocument document: root.document as LinkedDocument
    readonly property string title: text("title")
    readonly property string description: text("description")
    property var documents: []

    // The one to show first.
    readonly property LinkedDocument first: documents.find(
        document => document.documentId === text("first")) || documents[0] || null

    // Counts the links between documents that came or went.
    property int linkChanges: 0
    property int unreadable: 0

    // "loading", "missing" or "ready"
    readonly property string progress: document ? "ready" : answered ? "missing" : "loading"
    property bool answered: false

    function text(field: string): string {
        return document ? document.getStructValue("catalogue", field) : ""
    }

    // The documents that point at this one. Bind to linkChanges as well to have it follow.
    function referrersOf(document: LinkedDocument) {
        return documents.filter(other => Fields.targets(other).includes(document))
    }

    function collect() {
        const ids = Object.keys(document.getStruct("documents"))
        const found = ids.map(id => context.loadedDocument(id)).filter(other => other !== null)
        found.sort((a, b) => a.type.localeCompare(b.type) || a.label.localeCompare(b.label))
        unreadable = ids.length - found.length
        documents = found
    }

    onDocumentChanged: {
        if (document)
            collect()
    }

    RootDocument {
        id: root
        context: catalogue.context
        documentId: "sample.catalogue"
    }

    Connections {
        target: catalogue.context
        function onBusyChanged() {
            if (!catalogue.context.busy)
                catalogue.answered = true
        }
        function onDocumentLinked() {
            linkTimer.start()
        }
        function onDocumentUnlinked() {
            linkTimer.start()
        }
    }

    // Many come at once.
    Timer {
        id: linkTimer
        interval: 50
        onTriggered: ++catalogue.linkChanges
    }
}
