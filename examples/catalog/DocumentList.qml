// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import "../kit"

// All documents, with a field to search them and chips for their kinds.
Rectangle {
    id: list

    required property var documents
    readonly property string wanted: search.text.trim().toLowerCase()
    readonly property KindChip kind: kinds.checkedButton as KindChip
    readonly property var shown: documents.filter(
        document => kind !== null && kind.accepts(document) && matches(document))

    function matches(document): bool {
        return document.label.toLowerCase().includes(wanted)
            || document.documentId.toLowerCase().includes(wanted)
    }

    function step(distance: int) {
        const index = shown.indexOf(Session.current) + distance
        if (index >= 0 && index < shown.length)
            Session.current = shown[index]
    }

    color: Theme.surface

    Connections {
        target: Session
        function onCurrentChanged() {
            view.positionViewAtIndex(list.shown.indexOf(Session.current), ListView.Contain)
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

        ButtonGroup {
            id: kinds
        }

        Flow {
            spacing: 6
            Layout.fillWidth: true
            Layout.leftMargin: 2 * Theme.unit
            Layout.rightMargin: 2 * Theme.unit
            Layout.bottomMargin: 1.5 * Theme.unit

            KindChip {
                text: "All"
                kind: ""
                checked: true
                documents: list.documents
                ButtonGroup.group: kinds
            }
            KindChip {
                text: "Content"
                kind: "data"
                documents: list.documents
                ButtonGroup.group: kinds
            }
            KindChip {
                text: "Devices"
                kind: "device"
                documents: list.documents
                ButtonGroup.group: kinds
            }
            KindChip {
                text: "Settings"
                kind: "keyvaluestore"
                documents: list.documents
                ButtonGroup.group: kinds
            }
            KindChip {
                text: "Locations"
                kind: "location"
                documents: list.documents
                ButtonGroup.group: kinds
            }
            KindChip {
                text: "Products"
                kind: "product"
                documents: list.documents
                ButtonGroup.group: kinds
            }
            KindChip {
                text: "Tags"
                kind: "tag"
                documents: list.documents
                ButtonGroup.group: kinds
            }
        }

        Rectangle {
            implicitHeight: 1
            color: Theme.line
            Layout.fillWidth: true
        }

        ListView {
            id: view
            clip: true
            model: list.shown
            boundsBehavior: Flickable.StopAtBounds
            Layout.fillWidth: true
            Layout.fillHeight: true
            ScrollBar.vertical: ScrollBar { }

            delegate: DocumentRow { }

            Notice {
                visible: view.count === 0
                anchors.centerIn: parent
                width: parent.width - 6 * Theme.unit
                title: "Nothing found"
                text: "No label or id of this kind contains “" + search.text.trim() + "”."
            }
        }
    }
}
