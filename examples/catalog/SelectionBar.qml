// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQml 2.15
import QtQuick 2.15
import QtQuick.Layouts 1.15
import vorrel.data.Core 1.0
import "../kit"
import "fields.js" as Fields

// How many documents are selected, and a way to delete those that no other document refers to.
Rectangle {
    id: bar

    required property DocumentModel model
    required property EditContext context

    // What the user wants to delete, and what of it may go, once that is known.
    property var asked: null
    property var free: null

    function ask() {
        asked = Fields.list(model.selection)
    }

    function finish() {
        free = null
        asked = null
    }

    function remove() {
        context.beginRecordChanges()
        free.forEach(document => document.remove())
        context.endRecordChanges()
        model.clearSelection()
        finish()
    }

    visible: model.selection.length > 0
    implicitHeight: 52
    color: Theme.accentSoft

    // A new one for each question, so that an answer always belongs to what was asked.
    Instantiator {
        active: bar.asked !== null

        delegate: ReferenceCounter { }

        onObjectAdded: (index, counter) => {
            counter.statusChanged.connect(() => {
                if (counter.status === ReferenceCounter.Ready)
                    bar.free = bar.asked.filter(document => !counter.isReferenced(document))
            })
            counter.documents = bar.asked
        }
    }

    RowLayout {
        anchors.fill: parent
        anchors.leftMargin: 2 * Theme.unit
        anchors.rightMargin: 2 * Theme.unit
        spacing: Theme.unit

        Text {
            readonly property int referenced: bar.free ? bar.asked.length - bar.free.length : 0

            text: bar.asked === null ? bar.model.selection.length + " selected"
                : bar.free === null ? "Counting references…"
                : referenced === 0 ? "Nothing refers to them"
                : referenced + (referenced === 1 ? " is referred to and stays"
                                                 : " are referred to and stay")
            font.pixelSize: Theme.bodySize
            color: Theme.ink
            elide: Text.ElideRight
            Layout.fillWidth: true
        }

        ActionButton {
            visible: bar.asked === null
            text: "All"
            onClicked: bar.model.selectAll()
        }

        ActionButton {
            text: bar.asked === null ? "None" : "Keep"
            onClicked: bar.asked === null ? bar.model.clearSelection() : bar.finish()
        }

        ActionButton {
            visible: bar.asked === null || bar.free !== null && bar.free.length > 0
            text: bar.asked === null ? "Delete…" : "Delete " + (bar.free ? bar.free.length : "")
            primary: bar.asked !== null
            onClicked: bar.asked === null ? bar.ask() : bar.remove()
        }
    }
}
