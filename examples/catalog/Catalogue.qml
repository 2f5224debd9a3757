// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import vorrel.data.Core 1.0

// The documents that "sample.catalogue" names, in the order of the list. Loading it loads them,
// because it refers to them.
Item {
    id: catalogue

    required property Context context
    readonly property string documentId: root.documentId
    readonly property LinkedDocument document: root.document as LinkedDocument
    readonly property string title: text("title")
    readonly property string description: text("description")
    property var documents: []
    property int unreadable: 0

    // "loading", "missing" or "ready"
    readonly property string progress: document ? "ready" : answered ? "missing" : "loading"
    property bool answered: false

    function text(field: string): string {
        return document ? document.getStructValue("catalogue", field) : ""
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
    }
}
