// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtTest 1.2
import vorrel.data.Core 1.0

TestCase {
    id: testCase
    name: "DataList"

    property LinkedDocument page: null
    property var model: null

    EditContext {
        id: edits
    }

    Component {
        id: sample
        DataListModel {
            key: "blocks"
            StringField { name: "text" }
            IntegerField { name: "stored"; alias: "width"; defaultValue: 7 }
        }
    }

    SignalSpy {
        id: canCommit
        signalName: "canCommitChanged"
    }

    function init() {
        page = edits.createDocument("data:page")
        model = createTemporaryObject(sample, testCase, { document: page })
        canCommit.target = model
        canCommit.clear()
    }

    function test_rowsAreEditedAndCommitted() {
        const a = model.append({ text: "A", none: 1 })
        const b = model.insert(99)
        const c = model.prepend()
        verify(!model.move(1, 1) && !model.moveAfter(a, a) && !model.move(3, 0))
        verify(model.move(0, 100) && model.moveRelative(c, -1) && model.moveBefore(b, a))
        compare(canCommit.count, 1)
        model.commit()
        compare(page.getList("blocks"), [b, a, c])
        verify(!model.migrate("other", a) && model.count === 2)
        verify(model.canCommit)
        model.revert()
        model.migrate("other", 1, 0)
        verify(model.remove(c))
        compare(canCommit.count, 1) // it tells of none of these
        model.commit()
        compare(page.getList("blocks"), [b])
        compare(page.getList("other"), [a])
        compare(page.getStructValue(a, "text"), "A")
        edits.undo()
        compare(page.getList("blocks"), [b, a, c])
        compare(page.getList("other"), [])
        compare(model.count, 3)

        // What was taken out when the document won does not migrate later.
        model.migrate("other", a)
        page.newListItem("blocks", 0)
        compare(model.count, 4)
        model.remove(0)
        model.commit()
        compare(page.getList("blocks"), [b, a, c])
        compare(page.getList("other"), [])
        verify(page.removeListItem("blocks", c) && page.removeListItem("blocks", 0))
        compare(page.getList("blocks"), [a])
    }

    function test_fieldsMakeRoles() {
        const id = model.append()
        verify(!model.setData(0, "id", "x") && !model.setData("none", "text", "x"))
        verify(model.setData(id, "width", "12") && model.setData(0, "text", "A"))
        compare(model.data(id, "stored"), 12)
        compare(model.data(0, "width"), 12)
        model.commit()
        compare(page.getStruct(id), { stored: 12, text: "A" })
        const text = model.fields[0]
        model.setData(0, "text", "B")
        text.name = "renamed" // drops the edit
        verify(!model.canCommit)
        compare(model.data(0, "renamed"), "")
        text.defaultValue = "C"
        compare(model.data(0, "renamed"), "C")
        page.remove()
        verify(model.remove(0)) // a deleted document can be edited
    }
}
