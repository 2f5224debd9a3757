// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Layouts 1.15
import vorrel.data.Core 1.0
import "../kit"
import "fields.js" as Fields

// Says who refers to a document and deletes it, if nothing forbids that.
RowLayout {
    id: panel

    required property DocumentDeleter deleter
    readonly property Document document: deleter.document
    readonly property int count: deleter.dependantCount

    // Whether the user has to say it twice.
    property bool asking: false

    function remove() {
        asking = false
        Fields.edit(document, () => deleter.deleteDocument())
    }

    spacing: Theme.unit

    Connections {
        target: panel.deleter
        function onDocumentChanged() {
            panel.asking = false
        }
    }

    Text {
        text: panel.document && panel.document.deleted ? "" : panel.lockText() || panel.countText()
        font.pixelSize: Theme.captionSize
        color: panel.asking ? Theme.removed : Theme.inkSoft
    }

    ActionButton {
        visible: panel.asking
        text: "Keep"
        onClicked: panel.asking = false
    }

    ActionButton {
        text: panel.document && panel.document.deleted ? "Deleted"
                                                       : panel.asking ? "Delete anyway" : "Delete"
        enabled: !panel.deleter.locked && !panel.document.deleted
        onClicked: panel.deleter.referenced && !panel.asking ? panel.asking = true : panel.remove()
    }

    function lockText(): string {
        switch (deleter.lockReason) {
        case DocumentDeleter.NoWriteAccess:
            return "You may not change it"
        case DocumentDeleter.ImmutableDependant:
            return "A document that you may not change refers to it"
        case DocumentDeleter.Unknown:
            return deleter.status === DocumentDeleter.Error ? "Who refers to it is not known" : "…"
        default:
            return ""
        }
    }

    function countText(): string {
        return count === 0 ? "Nothing refers to it" : count === 1 ? "1 document refers to it"
                                                                  : count + " documents refer to it"
    }
}
