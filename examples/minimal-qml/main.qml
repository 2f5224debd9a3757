// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Window 2.15
import vorrel.data.Core 1.0

Window {
    property alias serviceUrl: shop.serviceUrl
    width: 480; height: 120; visible: true

    Context { id: shop; serviceUrl: "http://127.0.0.1:5984"; database: "sample" }
    RootDocument { id: store; context: shop; documentId: "sample.location.utrecht" }
    RootDocument { id: note; context: shop; documentId: "sample.note.today" }

    Text { text: store.document ? store.document.label : "Loading…" }
    Text {
        y: 40
        text: note.document ? "Here is " + note.document.documentId : "No note: click to make one"
        TapHandler { onTapped: shop.createDocumentWithId("data:note", note.documentId) }
    }
}
