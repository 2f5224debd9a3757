// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import vorrel.data.Core 1.0
import "../kit"
import "fields.js" as Fields

// The documents that the user wants to see, in the order that he wants. Some can be selected.
Rectangle {
    id: list

    required property Catalogue catalogue
    readonly property alias model: model
    readonly property alias filter: filter
    readonly property alias sorter: sorter

    function step(distance: int) {
        const index = model.indexOf(Session.current) + distance
        if (index >= 0 && index < model.documents.length)
            Session.current = model.documents[index]
    }

    objectName: "documentList"
    color: Theme.surface

    DocumentFilter {
        id: filter
        documents: list.catalogue.documents

        BooleanFilterCriterion {
            property: "deleted"
            value: false
        }
        TypeFilterCriterion {
            enabled: kinds.value !== ""
            types: [kinds.value]
            matchSubtypes: true
        }
        ReferenceFilterCriterion {
            enabled: groups.visible && groups.value !== null
            property: "productGroup"
            documents: groups.value ? [groups.value] : []
        }
        GroupedFilterCriterion {
            StringFilterCriterion {
                property: "label"
                contains: search.text.trim()
            }
            StringFilterCriterion {
                property: "documentId"
                contains: search.text.trim()
            }
        }
    }

    DocumentSorter {
        id: sorter
        documents: filter.result

        TypeSortCriterion {
            enabled: order.value === "kind"
        }
        DateTimeSortCriterion {
            enabled: order.value === "newest"
            property: "edited"
            descending: true
        }
        StringSortCriterion {
            property: "label"
        }
    }

    DocumentModel {
        id: model
        documents: sorter.result
    }

    Connections {
        target: Session
        function onCurrentChanged() {
            view.positionViewAtIndex(model.indexOf(Session.current), ListView.Contain)
        }
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        TextField {
            id: search
            placeholderText: "Search labels and ids"
            placeholderTextColor: Theme.inkFaint
            color: Theme.ink
            font.pixelSize: Theme.bodySize
            selectByMouse: true
            leftPadding: 12
            rightPadding: 12
            implicitHeight: 36
            Layout.fillWidth: true
            Layout.margins: 2 * Theme.unit
            Layout.bottomMargin: 1.5 * Theme.unit
            Keys.onDownPressed: list.step(1)
            Keys.onUpPressed: list.step(-1)

            background: Rectangle {
                radius: Theme.radius
                color: Theme.background
                border.color: search.activeFocus ? Theme.accent : Theme.line
            }
        }

        Chips {
            id: kinds
            value: ""
            choices: Fields.kindChoices(list.catalogue.counts)
            Layout.fillWidth: true
            Layout.leftMargin: 2 * Theme.unit
            Layout.rightMargin: 2 * Theme.unit
            Layout.bottomMargin: 1.5 * Theme.unit
        }

        Chips {
            id: groups
            visible: kinds.value === "product"
            value: null
            choices: Fields.groupChoices(list.catalogue.productGroups)
            Layout.fillWidth: true
            Layout.leftMargin: 2 * Theme.unit
            Layout.rightMargin: 2 * Theme.unit
            Layout.bottomMargin: 1.5 * Theme.unit
        }

        Rectangle {
            implicitHeight: 1
            color: Theme.line
            Layout.fillWidth: true
        }

        RowLayout {
            Layout.leftMargin: 2 * Theme.unit
            Layout.rightMargin: 2 * Theme.unit
            Layout.topMargin: Theme.unit
            Layout.bottomMargin: Theme.unit

            Text {
                text: view.count + (view.count === 1 ? " document by" : " documents by")
                font.pixelSize: Theme.captionSize
                color: Theme.inkFaint
            }

            Chips {
                id: order
                value: "kind"
                choices: [
                    { "text": "kind", "value": "kind" },
                    { "text": "name", "value": "name" },
                    { "text": "last edit", "value": "newest" }
                ]
                Layout.fillWidth: true
            }
        }

        ListView {
            id: view
            clip: true
            model: model
            boundsBehavior: Flickable.StopAtBounds
            Layout.fillWidth: true
            Layout.fillHeight: true
            ScrollBar.vertical: ScrollBar { }

            delegate: DocumentRow { }

            Notice {
                visible: !filter.busy && !sorter.busy && sorter.result.length === 0
                anchors.centerIn: parent
                width: parent.width - 6 * Theme.unit
                title: "Nothing found"
                text: "No label or id of this kind contains “" + search.text.trim() + "”."
            }
        }

        SelectionBar {
            model: model
            context: list.catalogue.context
            Layout.fillWidth: true
        }
    }
}
