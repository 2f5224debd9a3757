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
        readonly property string shown: [$.title, $.size, String($.tint), data.day, remark].join(" ")
        readonly property string remark: $.remark
        document: context.page
        key: context.page.newListItem("first", 0)
        StringField { name: "title"; defaultValue: "?" }
        IntegerField { name: "size"; maximum: 9 }
        ColorField { name: "tint" }
        DateField { name: "day" }
        StringField { name: "note"; alias: "remark" }
    }

    function stored() {
        return JSON.stringify(context.page.getStruct(block.key))
    }

    function test_aStructIsEdited() {
        compare(block.shown, "? 0 #ffffff Invalid Date ")
        block.$.title = "A"
        block.data.size = "12"
        block.$.tint = "navy"
        block.$.day = new Date(2024, 1, 29, 23, 59)
        compare([block.canCommit, block.shown.substring(0, 27)], [true, "A 9 #000080 Thu Feb 29 00:0"])
        compare(stored(), "{}")
        block.revert()
        compare(block.shown, "? 0 #ffffff Invalid Date ")
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
}
