// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
pragma Singleton
import QtQuick 2.15
import vorrel.data.Core 1.0
import "sample.js" as Sample

// The page that is edited, and the block of it that is selected.
Item {
    id: page

    property EditContext context: null
    readonly property LinkedDocument document: root.document as LinkedDocument
    readonly property string documentId: root.documentId

    // The id of a block; empty for none.
    property string selected: ""

    // Only a part of the blocks is listed if this is not empty.
    property string search: ""

    function nestedList(id: string): string {
        return Sample.nestedList(id)
    }

    function makeSample() {
        const made = context.createDocumentWithId("data:page", documentId) as LinkedDocument
        made.label = "Summer page"
        for (const list in Sample.lists)
            Sample.fill(made, list, Sample.lists[list])
        selectBlock()
    }

    function selectBlock() {
        selected = document ? document.getList("page")[1] || "" : ""
    }

    onDocumentChanged: selectBlock()

    RootDocument {
        id: root
        context: page.context
        documentId: "sample.page"
    }

    Connections {
        target: page.context
        function onBusyChanged() {
            // The server has answered, and has no page.
            if (!page.context.busy && !page.document)
                page.makeSample()
        }
    }
}
