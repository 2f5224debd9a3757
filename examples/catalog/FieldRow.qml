// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Layouts 1.15
import vorrel.data.Core 1.0
import "../kit"
import "fields.js" as Fields

// A name and its value. A reference shows the label of its document and leads there.
RowLayout {
    id: row

    required property var modelData
    readonly property var value: modelData.value
    readonly property string reference: Fields.reference(value)
    readonly property LinkedDocument target: reference
        ? Session.current.context.loadedDocument(reference) as LinkedDocument
        : Fields.isDocument(value) ? value as LinkedDocument : null

    spacing: Theme.unit

    Text {
        text: row.modelData.title
        font.pixelSize: Theme.bodySize
        color: Theme.inkSoft
        elide: Text.ElideRight
        Layout.preferredWidth: 116
        Layout.alignment: Qt.AlignTop
    }

    TypeMark {
        visible: row.target !== null
        type: row.target ? row.target.type : ""
    }

    Repeater {
        model: Fields.colors(row.value)

        delegate: Rectangle {
            required property string modelData

            implicitWidth: 14
            implicitHeight: 14
            radius: 3
            color: modelData
            border.color: Theme.line
        }
    }

    Text {
        text: row.target ? row.target.label || row.target.documentId : Fields.text(row.reference || row.value)
        textFormat: Text.PlainText
        font.pixelSize: Theme.bodySize
        font.underline: link.hovered
        color: row.target ? Theme.accent : Theme.ink
        wrapMode: Text.Wrap
        Layout.fillWidth: true

        HoverHandler {
            id: link
            enabled: row.target !== null
            cursorShape: Qt.PointingHandCursor
        }

        TapHandler {
            enabled: row.target !== null
            onTapped: Session.current = row.target
        }
    }
}
