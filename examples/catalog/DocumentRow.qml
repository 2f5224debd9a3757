// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import vorrel.data.Core 1.0
import "../kit"
import "fields.js" as Fields

// One document in the list.
AbstractButton {
    id: row

    required property LinkedDocument document
    required property bool selected
    readonly property bool current: document === Session.current
    readonly property bool unsaved: Session.isUnsaved(document)

    width: ListView.view ? ListView.view.width : 0
    height: 52
    leftPadding: 2 * Theme.unit
    rightPadding: 2 * Theme.unit
    hoverEnabled: true
    focusPolicy: Qt.NoFocus
    onClicked: Session.current = document
    text: document.label || document.documentId

    contentItem: RowLayout {
        spacing: 1.5 * Theme.unit

        TypeMark {
            type: row.document.type
            hollow: row.document.deleted
        }

        ColumnLayout {
            spacing: 2

            Text {
                text: row.text
                textFormat: Text.PlainText
                font.pixelSize: Theme.bodySize
                font.strikeout: row.document.deleted
                color: row.document.deleted ? Theme.inkFaint : Theme.ink
                elide: Text.ElideRight
                Layout.fillWidth: true
            }

            Text {
                text: Fields.typeTitle(row.document.type)
                font.pixelSize: Theme.captionSize
                color: Theme.inkFaint
            }
        }

        Text {
            text: row.document.deleted ? "deleted" : row.unsaved ? "unsaved"
                                                  : Fields.shortRevision(row.document.revision)
            font.pixelSize: Theme.captionSize
            color: row.document.deleted ? Theme.removed
                                        : row.unsaved ? Theme.edited : Theme.inkFaint
        }

        Rectangle {
            opacity: row.selected ? 1 : row.hovered ? 0.6 : 0
            implicitWidth: 16
            implicitHeight: 16
            radius: 4
            color: row.selected ? Theme.accent : Theme.surface
            border.color: Theme.accent

            Text {
                visible: row.selected
                anchors.centerIn: parent
                text: "✓"
                font.pixelSize: Theme.captionSize
                color: "white"
            }

            TapHandler {
                onTapped: row.ListView.view.model.toggleDocumentSelected(row.document)
            }
        }
    }

    background: Rectangle {
        color: row.current ? Theme.accentSoft : row.hovered ? Theme.hover : "transparent"

        Rectangle {
            visible: row.current
            width: 3
            height: parent.height
            color: Theme.accent
        }
    }
}
