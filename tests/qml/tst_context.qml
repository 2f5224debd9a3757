// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtTest 1.2
import vorrel.data.Core 1.0

TestCase {
    id: testCase
    name: "Context"

    property Context context: null
    property Tag tag: null

    Component {
        id: sample
        Context {
            property string urlAtOpening
            database: "sample"
            serviceUrl: "http://local" + "host:5984"
            onDatabaseChanged: urlAtOpening = String(serviceUrl)
        }
    }

    SignalSpy {
        id: spy
    }

    function init() {
        context = createTemporaryObject(sample, testCase)
    }

    function watch(object, signal) {
        spy.target = null // or it would look for the former signal
        spy.signalName = signal
        spy.target = object
        spy.clear()
    }

    function test_theServiceUrlIsThereWhenTheDatabaseOpens() {
        const opened = createTemporaryObject(sample, testCase)
        compare(opened.urlAtOpening, "http://localhost:5984")
    }

    function test_writingAPropertyAnnouncesTheChangeOnce() {
        const values = {
            serviceUrl: "http://elsewhere",
            database: "shop",
            changeFeedMonitorType: Context.PollingMonitor,
            contentFetchPolicy: Context.BypassDocumentCachePolicy
        }
        for (const name in values) {
            watch(context, name + "Changed")
            context[name] = values[name]
            context[name] = values[name]
            compare(String(context[name]), String(values[name]))
            compare(spy.count, 1)
        }
    }

    function test_documentsOutliveTheirJavaScriptReferences() {
        tag = context.createDocumentWithId("tag", "kept")
        tag.label = "still here"
        tag = null
        const copy = context.loadedDocument("kept").copy().documentId
        const other = context.createDocument("tag").documentId
        for (let i = 0; i < 3; ++i) {
            gc()
            wait(0) // deferred deletions happen here
        }
        compare(context.loadedDocument("kept").label, "still here")
        compare(context.loadedDocument(copy).label, "still here")
        compare(context.loadedDocument(other).type, "tag")
    }

    function test_aDocumentWithoutAContextIsRefused() {
        let message = ""
        try {
            Qt.createQmlObject("import vorrel.data.Core 1.0; Tag { }", testCase)
        } catch (error) {
            message = error.qmlErrors[0].message
        }
        compare(message, "Documents are made by a Context")
    }

    function test_freeFormDataTakesWhatJsonHolds() {
        const store = context.createDocument("keyvaluestore")
        for (const value of [0.85, false, null, { "NL": ["text", { "deep": "er" }] }]) {
            verify(store.setValue("key", value))
            compare(store.value("key"), value)
            watch(store, "structValueChanged")
            verify(store.setStructValue("note", "field", value))
            verify(!store.setStructValue("note", "field", value))
            compare(spy.count, 1)
            compare(store.getStruct("note"), { "field": value })
        }
        verify(store.clearValue("key"))
        compare(store.value("key"), undefined)
        verify(store.setStructValue("note", "field", undefined))
        compare(store.getStruct("note"), {})
    }
}
