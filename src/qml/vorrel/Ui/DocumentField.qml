// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Layouts 1.15
import vorrel.data.Core 1.0

// A document, by its id or from a list of those of some types. It only asks for another document:
// whoever uses it decides, and sets document.
ColumnLayout {
    id: field

    property Document document: null
    property Context context: null
    property var types: []
    property bool readOnly: false

    signal requested(Document document)
    signal cleared()

    property var candidates: []
    readonly property string shown: document ? document.documentId : ""

    function title(document) {
        return document.label || document.documentId
    }

    // The documents of all types that are listed.
    function collect() {
        let found = []
        for (let i = 0; i < listings.count; ++i) {
            const listing = listings.objectAt(i)
            if (listing)
                found = found.concat(Array.from(listing.documents))
        }
        candidates = found
    }

    function follow() {
        input.text = Qt.binding(() => field.shown)
    }

    spacing: 2

    Instantiator {
        id: listings
        model: field.context ? field.types.map(type => ({ type: type, field: field })) : []
        delegate: FieldListing { }
        onObjectAdded: field.collect()
        onObjectRemoved: field.collect()
    }

    RowLayout {
        spacing: 2

        TextField {
            id: input
            objectName: "input"
            text: field.shown
            placeholderText: "Id"
            readOnly: field.readOnly
            Layout.fillWidth: true
            onTextEdited: error = false
            onEditingFinished: {
                if (text === field.shown)
                    return
                const found = text === "" ? null : field.context.loadedDocument(text)
                error = text !== "" && !found
                if (error)
                    return
                if (found)
                    field.requested(found)
                else
                    field.cleared()
                field.follow()
            }
            Keys.onEscapePressed: {
                error = false
                field.follow()
            }
        }

        Button {
            objectName: "clear"
            text: "×"
            enabled: !field.readOnly && field.document !== null
            onClicked: field.cleared()
        }
    }

    ComboBox {
        objectName: "choice"
        visible: field.types.length > 0
        enabled: !field.readOnly
        model: field.candidates.map(field.title)
        currentIndex: field.candidates.indexOf(field.document)
        onActivated: index => {
            field.requested(field.candidates[index])
            currentIndex = Qt.binding(() => field.candidates.indexOf(field.document))
        }
        Layout.fillWidth: true
    }

    Text {
        visible: field.document !== null && field.types.length === 0
        text: field.document ? field.title(field.document) : ""
        textFormat: Text.PlainText
        font.pixelSize: Theme.fontSize
        color: Theme.inkSoft
        elide: Text.ElideRight
        Layout.fillWidth: true
    }
}
