// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtTest 1.2
import "../../examples/catalog" as Catalog

// The examples as a user meets them.
TestCase {
    id: testCase
    name: "Examples"
    when: windowShown

    Component {
        id: catalog
        Catalog.Main {
            serviceUrl: "http://localhost:5984"
            database: "sample"
        }
    }

    function findItem(item, test) {
        if (test(item))
            return item
        for (let i = 0; i < item.children.length; ++i) {
            const found = findItem(item.children[i], test)
            if (found)
                return found
        }
        return null
    }

    function itemWithText(window, text) {
        return findItem(window.contentItem, item => item.visible && item.text === text)
    }

    // The catalog, ready for keys.
    function openCatalog() {
        Catalog.Session.current = null // of the window before
        const window = createTemporaryObject(catalog, testCase)
        window.requestActivate()
        tryCompare(window, "active", true)
        tryVerify(() => Catalog.Session.current !== null)
        return window
    }

    function test_theMinimalExampleShowsAndMakesDocuments() {
        const component = Qt.createComponent("../../examples/minimal-qml/main.qml")
        compare(component.errorString(), "")
        const window = createTemporaryObject(component, testCase)
        verify(itemWithText(window, "Loading…"))
        tryVerify(() => itemWithText(window, "Larkmere Utrecht"))
        const note = itemWithText(window, "No note: click to make one")
        verify(note)
        mouseClick(note)
        compare(note.text, "Here is sample.note.today")
    }

    function test_theCatalogShowsEveryDocument() {
        const window = openCatalog()
        const list = findItem(window.contentItem, item => item.shown !== undefined)
        compare(list.shown.length, 91)
        for (const document of list.shown) {
            Catalog.Session.current = document
            tryVerify(() => itemWithText(window, document.documentId))
        }
    }

    function test_theCatalogEditsAndMakesDocuments() {
        const window = openCatalog()
        verify(!itemWithText(window, "Unsaved changes"))

        const row = findItem(window.contentItem,
                             item => item.text === "Larkmere Utrecht" && item.current)
        const label = findItem(window.contentItem, item => item.placeholderText === "Label")
        label.forceActiveFocus()
        tryCompare(label, "activeFocus", true)
        label.selectAll()
        keyClick("X")
        compare(row.text, "X")
        verify(itemWithText(window, "edited"))
        verify(itemWithText(window, "Unsaved changes"))

        verify(itemWithText(window, "Waiting for sample.note.today"))
        mouseClick(itemWithText(window, "Create it"))
        verify(!itemWithText(window, "Waiting for sample.note.today"))
        mouseClick(itemWithText(window, "Show it"))
        compare(Catalog.Session.current.documentId, "sample.note.today")
        tryVerify(() => itemWithText(window, "not stored yet"))
    }

    function test_theCatalogFindsDocuments_data() {
        return [
            { tag: "a word in another case", text: "KITCHEN", count: 4 },
            { tag: "an id", text: "sample.tag.", count: 13 },
            { tag: "nothing", text: "zzz", count: 0 }
        ]
    }

    function test_theCatalogFindsDocuments(data) {
        const window = openCatalog()
        const list = findItem(window.contentItem, item => item.shown !== undefined)
        findItem(list, item => item.placeholderText === "Search labels and ids").text = data.text
        compare(list.shown.length, data.count)
        compare(itemWithText(window, "Nothing found") !== null, data.count === 0)
    }
}
