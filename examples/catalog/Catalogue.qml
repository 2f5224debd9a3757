// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQml 2.15
import QtQuick 2.15
import vorrel.data.Core 1.0
import "fields.js" as Fields

// What the database holds: a listing for each kind of document. Until these have their answers, and
// without a network, it is what "sample.catalogue" names.
Item {
    id: catalogue

    required property EditContext context
    readonly property string documentId: root.documentId
    readonly property LinkedDocument document: root.document as LinkedDocument
    readonly property string title: text("title")
    readonly property string description: text("description")

    property var documents: []

    // How many documents of each kind there are.
    property var counts: ({})
    property var productGroups: []

    // Whether the listings have their answers.
    property bool listed: false

    // The one to show first.
    readonly property LinkedDocument first: document && context.loadedDocument(text("first"))
        || documents[0] || null

    // "loading", "missing" or "ready"
    readonly property string progress: documents.length ? "ready"
        : answers < listings.count || context.busy ? "loading" : "missing"

    // How often a listing had its answer.
    property int answers: 0

    function text(field: string): string {
        return document ? document.getStructValue("catalogue", field) : ""
    }

    // The documents that each object of an Instantiator has.
    function allOf(finders, documents) {
        const lists = []
        for (let i = 0; i < finders.count; ++i)
            lists.push(documents(finders.objectAt(i)))
        return [].concat(...lists)
    }

    function collect() {
        const all = allOf(listings, listing => Fields.list(listing.documents))
        listed = listed || all.length > named.count
        show(listed ? all : allOf(named, root => root.document || []))
    }

    function show(all) {
        const numbers = {}
        const groups = []
        for (const other of all) {
            const type = other.type
            const kind = Fields.kind(type)
            numbers[kind] = (numbers[kind] || 0) + 1
            if (type === "group:product")
                groups.push(other)
        }
        counts = numbers
        productGroups = groups
        documents = all
    }

    onDocumentChanged: later.start()

    // Many come at once.
    Timer {
        id: later
        interval: 0
        onTriggered: catalogue.collect()
    }

    RootDocument {
        id: root
        context: catalogue.context
        documentId: "sample.catalogue"
    }

    Instantiator {
        id: named
        model: catalogue.document ? Object.keys(catalogue.document.getStruct("documents")) : []

        delegate: RootDocument {
            required property string modelData
            documentId: modelData
        }

        onObjectAdded: (index, root) => {
            root.documentChanged.connect(later.start)
            root.context = catalogue.context
        }
    }

    Instantiator {
        id: listings
        model: Fields.kinds

        delegate: TypeListing {
            required property string modelData
            type: modelData
        }

        onObjectAdded: (index, listing) => {
            listing.documentsChanged.connect(later.start)
            listing.statusChanged.connect(() => {
                if (listing.status === Listing.Loaded)
                    ++catalogue.answers
            })
            listing.context = catalogue.context
        }
    }
}
