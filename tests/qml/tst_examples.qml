// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtTest 1.2
import "../../examples/catalog" as Catalog
import "../../examples/pageeditor" as PageEditor

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
        return test(item) ? item : Array.from(item.children).reduce(
            (found, child) => found || findItem(child, test), null)
    }

    function itemWithText(window, text) {
        return findItem(window.contentItem, item => item.visible && item.text === text)
    }

    // Before the other one by its name, since that saves the note.
    function test_aMinimalExampleShowsAndMakesDocuments() {
        const component = Qt.createComponent("../../examples/minimal-qml/main.qml")
        const window = createTemporaryObject(component, testCase)
        verify(itemWithText(window, "Loading…"))
        tryVerify(() => itemWithText(window, "Larkmere Utrecht"))
        const note = itemWithText(window, "No note: click to make one")
        mouseClick(note)
        compare(note.text, "Here is sample.note.today")
    }

    function test_theCatalogShowsEditsAndMakesDocuments() {
        const window = createTemporaryObject(catalog, testCase)
        tryVerify(() => Catalog.Session.current !== null)
        const list = findItem(window.contentItem, item => item.objectName === "documentList")
        const model = list.model
        const shown = id => Array.from(model.documents).find(other => other.documentId === id)
        tryVerify(() => model.documents.length === 93)
        for (const document of Array.from(model.documents)) {
            Catalog.Session.current = document
            tryVerify(() => itemWithText(window, document.documentId))
        }

        Catalog.Session.current = shown("sample.product.terrace-table")
        tryVerify(() => findItem(window.contentItem, item => item.fillMode !== undefined && item.paintedWidth > 200))

        verify(!itemWithText(window, "Unsaved changes"))
        // Who refers to a document follows the edits of others.
        const device = shown("sample.device.utrecht-window")
        Catalog.Session.current = device.location
        tryVerify(() => itemWithText(window, "REFERRED TO BY"))
        verify(itemWithText(window, device.label))
        device.location = null
        tryVerify(() => !itemWithText(window, device.label))

        Catalog.Session.current = model.documents[0]
        const row = findItem(window.contentItem, item => item.text && item.current)
        const label = findItem(window.contentItem, item => item.placeholderText === "Label")
        const before = row.text
        label.text = "X"
        label.textEdited() // as if by keys
        compare(row.text, "X")
        verify(itemWithText(window, "unsaved"))
        verify(itemWithText(window, "Unsaved changes"))
        tryVerify(() => !Catalog.Session.catalogue.context.busy)
        mouseClick(itemWithText(window, "Undo"))
        compare(row.text, before)
        keyClick("Z", Qt.ControlModifier | Qt.ShiftModifier)
        compare(row.text, "X")
        label.forceActiveFocus()
        keyClick("Z", Qt.ControlModifier)
        compare(row.text, before)
        verify(!itemWithText(window, "Undo").enabled)

        verify(itemWithText(window, "Waiting for sample.note.today"))
        mouseClick(itemWithText(window, "Create it"))
        mouseClick(itemWithText(window, "Show it"))
        compare(Catalog.Session.current.documentId, "sample.note.today")
        tryVerify(() => itemWithText(window, "not stored yet"))
        verify(itemWithText(window, "It exists in this window only, until it is saved."))
        mouseClick(itemWithText(window, "Save"))
        tryVerify(() => itemWithText(window, "It is in the database."))
        verify(!itemWithText(window, "Unsaved changes"))
        verify(!itemWithText(window, "not stored yet"))
    }

    function test_theCatalogFiltersSortsSelectsAndDeletes() {
        const window = createTemporaryObject(catalog, testCase)
        const list = findItem(window.contentItem, item => item.objectName === "documentList")
        const model = list.model
        const labels = () => Array.from(model.documents).map(other => other.label)
        const search = findItem(list, item => item.placeholderText === "Search labels and ids")
        tryVerify(() => model.documents.length === 93)
        search.text = "KITCHEN"
        tryVerify(() => model.documents.length === 4)
        search.text = ""
        mouseClick(itemWithText(window, "Products  10"))
        tryVerify(() => model.documents.length === 10)
        mouseClick(itemWithText(window, "Garden furniture"))
        tryVerify(() => model.documents.length === 2)
        mouseClick(itemWithText(window, "All  93"))
        mouseClick(itemWithText(window, "name"))
        const isSorted = texts => texts.every((text, i) => i === 0 || texts[i - 1].localeCompare(text) <= 0)
        tryVerify(() => labels().length === 93 && isSorted(labels()))

        // The one that others refer to stays; the other one comes back.
        const oak = Catalog.Session.catalogue.context.loadedDocument("sample.producttag.oak")
        const card = Catalog.Session.catalogue.context.loadedDocument("sample.product.gift-card")
        model.selectDocument(oak)
        model.selectDocument(card)
        mouseClick(itemWithText(window, "Delete…"))
        tryVerify(() => itemWithText(window, "1 is referred to and stays"))
        mouseClick(itemWithText(window, "Delete 1"))
        verify(card.deleted && !oak.deleted)
        tryVerify(() => labels().length === 92)
        mouseClick(itemWithText(window, "Undo"))
        tryVerify(() => labels().length === 93)

        Catalog.Session.current = oak
        tryVerify(() => itemWithText(window, "1 document refers to it"))
        mouseClick(itemWithText(window, "Delete"))
        verify(!oak.deleted)
        mouseClick(itemWithText(window, "Delete anyway"))
        verify(oak.deleted)
        mouseClick(itemWithText(window, "Undo"))
        verify(!oak.deleted)
    }

    function test_thePageEditorMovesAndEditsBlocks() {
        const component = Qt.createComponent("../../examples/pageeditor/Main.qml")
        const window = createTemporaryObject(component, testCase, { serviceUrl: "http://localhost", database: "sample" })
        tryVerify(() => itemWithText(window, "Newsletter"))
        const page = PageEditor.Session.document
        const titles = () => page.getList("page").map(id => page.getStructValue(id, "title")).join()
        const before = titles()
        const [a, b] = ["Newsletter", "Visit us"].map(text => itemWithText(window, text).mapToItem(null, 40, 2))
        mousePress(window.contentItem, a.x, a.y)
        for (let step = 1; step <= 4; ++step)
            mouseMove(window.contentItem, a.x + (b.x - a.x) * step / 4, a.y + (b.y - a.y) * step / 4)
        mouseRelease(window.contentItem, b.x, b.y)
        tryVerify(() => titles() === before.replace("Visit", "Newsletter,Visit"))
        compare(page.getList("shelf").length, 1)
        mouseClick(itemWithText(window, "Undo"))
        compare(titles(), before)
        const field = findItem(window.contentItem, item => item.text === "Newsletter" && item.selectByMouse)
        field.text = "Come"
        field.textEdited() // as if by keys
        mouseClick(itemWithText(window, "Commit"))
        tryVerify(() => itemWithText(window, "Come"))
    }
}
