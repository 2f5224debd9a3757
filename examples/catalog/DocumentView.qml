// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import vorrel.data.Core 1.0
import "../kit"
import "fields.js" as Fields

// All there is to know about one document. Its label can be changed: the list follows, because
// both show the same object.
ScrollView {
    id: view

    required property LinkedDocument document

    // Counts edits of free-form data, which have no property to bind to.
    property int structEdits: 0

    // Two bindings, since reading the content may build documents, which makes links.
    readonly property var content: structEdits, Fields.sections(document)
    readonly property var links: Fields.linkSections(document, Fields.list(deleter.dependants))

    contentWidth: availableWidth
    clip: true

    Connections {
        target: view.document
        function onStructValueChanged() {
            ++view.structEdits
        }
    }

    DocumentDeleter {
        id: deleter
        document: view.document
    }

    DropArea {
        id: drop
        objectName: "pictures"
        parent: view
        anchors.fill: parent
        enabled: view.document.type === "product" && !view.document.deleted
        keys: ["text/uri-list"]
        onDropped: event => addPicture(event.urls[0])

        function addPicture(file) {
            Fields.addPicture(view.document, file)
        }
    }

    ColumnLayout {
        width: view.availableWidth
        spacing: 2 * Theme.unit

        RowLayout {
            spacing: Theme.unit
            Layout.margins: 3 * Theme.unit
            Layout.bottomMargin: 0

            TypeMark {
                type: view.document.type
                hollow: view.document.deleted
            }

            Text {
                text: Fields.typeTitle(view.document.type)
                font.pixelSize: Theme.bodySize
                color: Theme.inkSoft
            }

            Text {
                text: view.document.documentId
                font.pixelSize: Theme.captionSize
                color: Theme.inkFaint
                elide: Text.ElideRight
                Layout.fillWidth: true
                Layout.leftMargin: Theme.unit
            }

            DeletePanel {
                deleter: deleter
            }
        }

        TextField {
            id: label
            text: view.document.label
            enabled: !view.document.deleted
            placeholderText: "Label"
            placeholderTextColor: Theme.inkFaint
            font.pixelSize: Theme.headlineSize
            font.weight: Font.Light
            color: enabled ? Theme.ink : Theme.inkFaint
            selectByMouse: true
            leftPadding: 2 * Theme.unit
            rightPadding: 2 * Theme.unit
            implicitHeight: 48
            verticalAlignment: TextInput.AlignVCenter
            Layout.fillWidth: true
            Layout.leftMargin: 3 * Theme.unit
            Layout.rightMargin: 3 * Theme.unit
            // The field would only undo its own text.
            Keys.onPressed: event => {
                if (event.matches(StandardKey.Undo))
                    Session.catalogue.context.undo()
                else if (event.matches(StandardKey.Redo))
                    Session.catalogue.context.redo()
                event.accepted = event.matches(StandardKey.Undo) || event.matches(StandardKey.Redo)
            }
            onTextEdited: Fields.rename(view.document, text)
            onTextChanged: {
                if (!activeFocus)
                    cursorPosition = 0 // shows the beginning
            }

            background: Rectangle {
                radius: Theme.radius
                color: Theme.surface
                border.color: label.activeFocus ? Theme.accent : Theme.line
            }
        }

        RowLayout {
            spacing: 4 * Theme.unit
            Layout.leftMargin: 5 * Theme.unit

            LabelledText {
                label: "Revision"
                text: Fields.shortRevision(view.document.revision) || "not stored yet"
            }

            LabelledText {
                label: "Created"
                text: Fields.date(view.document.created)
            }

            LabelledText {
                label: "Edited"
                text: Fields.date(view.document.edited)
            }
        }

        RowLayout {
            spacing: 3 * Theme.unit
            Layout.leftMargin: 3 * Theme.unit

            Photo {
                document: Fields.image(view.document)
            }

            ColumnLayout {
                visible: drop.enabled
                spacing: 3 * Theme.unit

                Text {
                    text: "Drop a picture anywhere here to show this product with it."
                    font.pixelSize: Theme.captionSize
                    color: Theme.inkFaint
                }

                PriceSlider {
                    product: view.document.type === "product" ? view.document : null
                    implicitWidth: 240
                }
            }
        }

        // The first table is the main one; the others are its parts.
        GridLayout {
            columns: 2
            columnSpacing: 1.5 * Theme.unit
            rowSpacing: 1.5 * Theme.unit
            Layout.fillWidth: true
            Layout.margins: 3 * Theme.unit
            Layout.topMargin: 0

            Repeater {
                model: (view.content || []).concat(view.links || [])

                delegate: FieldTable {
                    Layout.columnSpan: wide ? 2 : 1
                    Layout.preferredWidth: Layout.columnSpan
                    Layout.fillWidth: true
                    Layout.fillHeight: true
                }
            }

            Text {
                visible: view.content.length === 0
                text: "It has no content beyond its label."
                font.pixelSize: Theme.bodySize
                color: Theme.inkFaint
                Layout.leftMargin: 2 * Theme.unit
            }
        }
    }
}
