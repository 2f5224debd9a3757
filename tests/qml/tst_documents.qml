// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtTest 1.2
import vorrel.data.Core 1.0

TestCase {
    id: testCase
    name: "Documents"

    property Context context: null
    property Document anything: null
    property Tag tag: null

    Component {
        id: sample
        Context {
            serviceUrl: "http://localhost:5984"
            database: "sample"
        }
    }

    Component {
        id: rootDocument
        RootDocument { }
    }

    SignalSpy {
        id: spy
    }

    function init() {
        context = createTemporaryObject(sample, testCase)
    }

    function open(id) {
        return createTemporaryObject(rootDocument, testCase, { context: context, documentId: id })
    }

    function watch(object, signal) {
        spy.target = null // or it would look for the former signal
        spy.signalName = signal
        spy.target = object
        spy.clear()
    }

    // RootDocument

    function test_aRootDocumentShowsWhatTheDatabaseHas_data() {
        return [
            { tag: "sample.tag.spring", label: "Spring season", type: "tag" },
            { tag: "sample.location.cologne", label: "Larkmere Köln", type: "location" },
            { tag: "sample.hours.utrecht", label: "Opening hours Utrecht", type: "data:opening:hours" }
        ]
    }

    function test_aRootDocumentShowsWhatTheDatabaseHas(data) {
        const root = open(data.tag)
        compare(root.document, null)
        tryVerify(() => root.document !== null)
        compare(root.document.documentId, data.tag)
        compare(root.document.label, data.label)
        compare(root.document.type, data.type)
        compare(root.document.context, context)
        verify(root.document.revision.startsWith("1-"))
    }

    function test_aRootDocumentStaysEmptyUntilItsDocumentIsMade() {
        const root = open("no.such.note")
        tryCompare(context, "busy", true)
        tryCompare(context, "busy", false)
        compare(root.document, null)

        const made = context.createDocumentWithId("data:note", "no.such.note")
        compare(root.document, made)
        verify(made.isLocal())
        verify(context.hasLocalChanges)

        made.remove()
        compare(root.document, null)
    }

    function test_aRootDocumentFollowsItsId() {
        const root = open("sample.tag.sale")
        tryVerify(() => root.document !== null)
        root.documentId = ""
        compare(root.document, null)
        root.documentId = "sample.tag.kids"
        tryVerify(() => root.document !== null)
        compare(root.document.documentId, "sample.tag.kids")
    }

    // Objects from C++

    function test_documentsOutliveTheirJavaScriptReferences_data() {
        return [
            { tag: "createDocumentWithId", make: id => context.createDocumentWithId("tag", id) },
            { tag: "loadedDocument", make: function(id) {
                context.createDocumentWithId("tag", id)
                return context.loadedDocument(id)
            } },
            { tag: "createDocument", make: () => context.createDocument("tag") },
            { tag: "copy", make: () => context.createDocument("tag").copy() }
        ]
    }

    function test_documentsOutliveTheirJavaScriptReferences(data) {
        let document = data.make("kept")
        document.label = "still here"
        const id = document.documentId
        document = null
        for (let i = 0; i < 3; ++i) {
            gc()
            wait(0) // deferred deletions happen here
        }
        verify(context.isLoaded(id))
        compare(context.loadedDocument(id).label, "still here")
    }

    function test_whatCannotBeMadeIsNull_data() {
        return [
            { tag: "unknown type", type: "nonsense", id: "a" },
            { tag: "type without a tail", type: "data", id: "a" },
            { tag: "id beyond Latin-1", type: "tag", id: "\u4e2d" },
            { tag: "id of a live document", type: "tag", id: "taken" }
        ]
    }

    function test_whatCannotBeMadeIsNull(data) {
        const taken = context.createDocumentWithId("tag", "taken")
        compare(context.createDocumentWithId(data.type, data.id), null)
        compare(context.loadedDocument("taken"), taken)
    }

    function test_documentsFitPropertiesOfTheirType() {
        const location = context.createDocument("location")
        anything = location
        compare(anything, location)
        compare(anything.attachedDocuments.length, 0)
        let refused = false
        try {
            tag = location
        } catch (error) {
            refused = true
        }
        verify(refused)
        tag = context.createDocument("tag")
        verify(tag.appliesToType(location))
        verify(tag.hasType("tag"))
        verify(!tag.hasType("location"))
    }

    // Properties

    function test_anEditIsAnnouncedAndCounts_data() {
        return [
            { tag: "tag.label", value: "Spring" },
            { tag: "tag.name", value: "spring" },
            { tag: "tag.icon", value: "https://media.larkmere.example/spring.svg" },
            { tag: "tag.applicableTypes", value: ["asset", "data:playlist"] },
            { tag: "location.label", value: "Utrecht" },
            { tag: "location.address", value: "Koperslagerskade 14" },
            { tag: "location.city", value: "Köln" },
            { tag: "location.zipCode", value: "3511 TX" },
            { tag: "location.country", value: "Netherlands" },
            { tag: "location.notes", value: "Ring twice" },
            { tag: "tag.deleted", value: true }
        ]
    }

    function test_anEditIsAnnouncedAndCounts(data) {
        const [type, name] = data.tag.split(".")
        const root = open(type === "tag" ? "sample.tag.winter" : "sample.location.ghent")
        tryVerify(() => root.document !== null)
        const document = root.document
        verify(!context.hasLocalChanges)
        watch(document, name + "Changed")
        document[name] = data.value
        document[name] = data.value
        compare(spy.count, 1)
        compare(String(document[name]), String(data.value))
        verify(context.hasLocalChanges)
    }

    function test_aKeyValueStoreHoldsWhatJsonHolds_data() {
        return [
            { tag: "text", value: "landscape" },
            { tag: "number", value: 0.85 },
            { tag: "boolean", value: false },
            { tag: "array", value: ["Fraunces", 2, [true]] },
            { tag: "object", value: { "NL": "EUR", "steps": [0.95, { "deep": "er" }] } },
            { tag: "null", value: null }
        ]
    }

    function test_aKeyValueStoreHoldsWhatJsonHolds(data) {
        const store = context.createDocument("keyvaluestore")
        watch(store, "dataChanged")
        verify(store.setValue("key", data.value))
        compare(store.value("key"), data.value)
        compare(store.data["key"], data.value)
        compare(store.keys, ["key"])
        compare(spy.count, 1)
        verify(store.clearValue("key"))
        verify(!store.clearValue("key"))
        compare(store.value("key"), undefined)
        compare(spy.count, 2)
    }

    function test_freeFormDataTakesJsonValues_data() {
        return test_aKeyValueStoreHoldsWhatJsonHolds_data()
    }

    function test_freeFormDataTakesJsonValues(data) {
        const note = context.createDocument("data:note")
        watch(note, "structValueChanged")
        verify(note.setStructValue("note", "field", data.value))
        verify(!note.setStructValue("note", "field", data.value))
        compare(spy.count, 1)
        compare([spy.signalArguments[0][0], spy.signalArguments[0][1]], ["note", "field"])
        compare(note.getStructValue("note", "field"), data.value)
        compare(note.getStruct("note"), { "field": data.value })
        verify(note.setStructValue("note", "field", undefined))
        compare(note.getStruct("note"), {})
        compare(note.getStructValue("note", "field"), undefined)
    }
}
