// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtTest 1.2
import vorrel.data.Core 1.0

// The components that edit values of schemas, as a user handles them.
TestCase {
    id: testCase
    name: "SchemaEditors"
    width: 400
    height: 500
    visible: true
    when: windowShown

    property var exhibit: null
    property Schema schema: null
    property var link: null
    property Item editor: null

    Component {
        id: database
        EditContext { }
    }

    Component {
        id: loader
        Loader { }
    }

    function init() {
        const context = createTemporaryObject(database, testCase)
        schema = context.createDocument("schema")
        exhibit = context.createDocument("exhibit")
        exhibit.values.setSchema(schema)
    }

    function add(type, properties) {
        const variable = schema.insertVariable("schemavariable:" + type)
        return Object.assign(variable, properties)
    }

    function open(variable, kind) {
        const component = variable.getEditorComponent(kind)
        editor = createTemporaryObject(loader, testCase, { sourceComponent: component, width: 300 }).item
        editor.variable = variable
        editor.store = exhibit.values
        waitForRendering(editor)
        return editor
    }

    function type(text, name) {
        const input = findChild(editor, name || "input")
        input.forceActiveFocus()
        input.selectAll()
        keyClick(Qt.Key_Backspace)
        for (const letter of text)
            keyClick(letter)
        if (!name)
            keyClick(Qt.Key_Return)
        return input
    }

    function press(name) {
        mouseClick(findChild(editor, name))
    }

    function stored(variable) {
        const values = exhibit.stored().values.values
        return values[variable.uuid]
    }

    function test_editors_data() {
        const both = [0, 1]
        const date = { date: "2027-05-31" }
        const text = value => ({ string: { type: "langstring", items: { de: value } } })
        return [
            { tag: "boolean", kinds: both, act: () => press("input"), value: { boolean: true } },
            { tag: "color", kinds: both, act: () => type("#D9822b"), bad: "#d9", value: { color: "#d9822b" } },
            { tag: "color", kinds: both, act: () => press("#2f5d50"), value: { color: "#2f5d50" } },
            { tag: "date", kinds: both, act: () => type("2027-05-31"), bad: "2027-02-30", value: date },
            { tag: "date", kinds: [0], act: () => { type("2027-04-01"); press("next"); press("2027-05-31") }, value: date },
            { tag: "time", kinds: both, act: () => type("18:30"), bad: "25:00", value: { time: "18:30:00" } },
            { tag: "time", kinds: [0], act: () => { press("step-60"); press("step-5") }, value: { time: "22:55:00" } },
            { tag: "integer", kinds: both, act: () => type("99"), bad: "many", maximum: 12, value: { integer: 12 } },
            { tag: "integer", kinds: both, act: () => { press("more"); press("more"); press("less") }, value: { integer: 1 } },
            { tag: "integer", kinds: [0], act: () => press("slider"), maximum: 10, minimum: 0, value: { integer: 5 } },
            { tag: "real", kinds: both, act: () => type("2,25"), bad: "?", decimals: 2, value: { real: 2.25 } },
            { tag: "string", kinds: both, act: () => type("Hi"), value: text("Hi") },
            { tag: "string", kinds: [0], act: () => type("Hi", "lines"), multiline: true, value: text("Hi") },
            { tag: "string", kinds: [1], act: () => type("Hi", "lines"), multiline: true, string: "a\nb" },
            { tag: "string", kinds: both, act: () => type(""), string: "default", value: text("") },
            { tag: "url", kinds: both, act: () => type("https://a.test"), value: { url: "https://a.test" } },
            { tag: "enumeration", kinds: both, entries: ["a", "b", "c"],
              act: () => { findChild(editor, "input").forceActiveFocus(); keyClick(Qt.Key_Down) }, value: { index: 1 } },
            { tag: "documentlink", kinds: both, act: () => type(link.documentId), bad: "nobody", value: "documentLink" },
            { tag: "productlink", kinds: both, act: () => type(link.documentId), bad: "nobody", value: "product" },
            { tag: "medialink", kinds: both, act: () => type(link.documentId), bad: "nobody", value: "media" }
        ]
    }

    function test_editors(row) {
        link = exhibit.context.createDocument(row.tag === "medialink" ? "asset:image" : "product")
        for (const kind of row.kinds) {
            const properties = {}
            for (const name of ["minimum", "maximum", "decimals", "multiline", "string"]) {
                if (row[name] !== undefined)
                    properties[name] = row[name]
            }
            const variable = add(row.tag, properties)
            for (const entry of row.entries || [])
                variable.addEntry(entry)
            open(variable, kind)
            if (row.bad) {
                verify(type(row.bad).error)
                compare(stored(variable), undefined)
            }
            row.act()
            const expected = typeof row.value === "string" ? { [row.value]: link.documentId } : row.value
            if (expected)
                expected.type = "schemavalue:" + row.tag
            compare(stored(variable), expected)
            // Each edit can be undone, and the editor follows the value from elsewhere.
            tryCompare(exhibit.context, "canUndo", expected !== undefined)
            exhibit.values.clearValue(variable)
            compare(editor.edited.set, false)
            compare(stored(variable), undefined)
            const input = findChild(editor, "input")
            if (["color", "date", "time", "string", "url"].includes(row.tag))
                compare(input.text, editor.edited.text)
        }
    }

    function test_oneComponentServesAllVariablesOfAType() {
        const first = add("integer")
        const second = add("integer")
        const component = first.getEditorComponent(SchemaVariable.ValueEditor)
        compare(second.getEditorComponent(SchemaVariable.ValueEditor), component)
        verify(first.getEditorComponent(SchemaVariable.CondensedValueEditor) !== component)
        compare(first.getEditorComponent(2), null)
        schema.removeVariable(first)
        wait(0) // it is destroyed now
        gc()
        verify(open(second, 0).edited)
        compare(second.getEditorComponent(0), component)
    }
}
