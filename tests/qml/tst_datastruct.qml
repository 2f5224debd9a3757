// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtTest 1.2
import vorrel.data.Core 1.0

TestCase {
    id: testCase
    name: "DataStruct"

    EditContext {
        id: context
        readonly property LinkedDocument page: createDocument("keyvaluestore") as LinkedDocument
    }

    DataStruct {
        id: block
        readonly property string shown: [$.title, $.size, String($.tint), Number(data.day), remark].join(" ")
        readonly property string remark: $.remark
        document: context.page
        key: context.page.newListItem("first", 0)
        StringField { name: "title"; defaultValue: "?" }
        IntegerField { name: "size"; maximum: 9 }
        ColorField { name: "tint" }
        DateField { name: "day" }
        StringField { name: "note"; alias: "remark" }
    }

    DataStruct {
        id: life
        key: "s"
        property var edits: ({}) // as they have to be
        property bool told: false
        document: context.page
        onCanCommitChanged: told = canCommit
        onKeyChanged: edits = {}
        IntegerField { name: "a" }
        IntegerField { name: "b"; defaultValue: 2 }
    }

    Connections {
        target: context.page
        function onStructValueChanged(key, field) {
            if (key === life.key)
                field ? delete life.edits[field] : life.edits = {}
        }
    }

    function stored() {
        return JSON.stringify(context.page.getStruct(block.key))
    }

    function test_aStructIsEdited() {
        compare(block.shown, "? 0 #ffffff NaN ")
        block.$.title = "A"
        block.data.size = "12"
        block.$.tint = "navy"
        block.$.day = new Date(2024, 1, 29, 23, 59)
        compare([block.canCommit, block.shown], [true, "A 9 #000080 1709164800000 "])
        block.$.day = block.$.day
        compare(Number(block.$.day), Date.UTC(2024, 1, 29))
        compare(stored(), "{}")
        block.revert()
        compare(block.shown, "? 0 #ffffff NaN ")
        context.page.setStruct(block.key, { "title": "B", "note": "aliased", "size": 3 })
        block.$.title = "C"
        block.$.size = 4
        context.page.setStructValue(block.key, "title", "D") // by somebody else
        compare(block.transaction(map => { map.remark = "gone" }), false)
        compare(stored(), '{"size":4,"title":"D"}')
        context.undo()
        compare(stored(), '{"note":"aliased","size":3,"title":"D"}')
        let failure = ""
        block.transaction(map => { map.title = "E"; nobody() }, error => failure = error.message)
        compare([failure, block.canCommit, block.$.title], ["nobody is not defined", false, "D"])
        verify(!block.moveToList("first") && block.moveToList("second") && block.canCommit)
        block.commit()
        compare([block.listParent, block.canCommit], ["second", false])
    }

    function test_randomStepsLeadWhereTheyHaveTo() {
        const steps = []
        for (let step = 0; step < 5000; ++step) {
            const [kind, i, number] = [8, 2, 4].map(end => Math.floor(Math.random() * end))
            const name = ["a", "b"][i]
            const edit = () => {
                if (life.$[name] !== number)
                    life.edits[name] = number
                life.$[name] = number
            }
            steps.push([kind, i, number].join("-"))
            ;[edit, edit, () => life.commit(number > 1), () => life.revert(),
              () => context.page.setStructValue(life.key, name, number),
              () => context.page.setStruct(life.key, { [name]: number }),
              () => number > 2 ? context.undo() : undefined,
              () => { life.key = number > 2 ? "t" : "s" }][kind]()
            if (kind === 2 || kind === 3)
                life.edits = {}
            const expected = Object.assign({ a: 0, b: 2 }, context.page.getStruct(life.key), life.edits)
            compare([life.$.a, life.$.b, life.told],
                    [expected.a, expected.b, Object.keys(life.edits).length > 0], steps.join())
        }
    }
}
