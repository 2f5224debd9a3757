// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Layouts 1.15
import "../kit"

// A block as it stands in a list.
Rectangle {
    id: card

    required property var model
    readonly property bool current: model.id === Session.selected

    implicitHeight: content.implicitHeight + 3 * Theme.unit
    radius: Theme.radius
    color: card.current ? Theme.accentSoft : Theme.surface
    border.color: card.current ? Theme.accent : Theme.line

    Rectangle {
        width: 6
        radius: 3
        color: card.model.tint
        opacity: card.model.hidden ? 0.3 : 1
        anchors {
            left: parent.left
            top: parent.top
            bottom: parent.bottom
            margins: Theme.unit
        }
    }

    ColumnLayout {
        id: content

        spacing: 4
        opacity: card.model.hidden ? 0.5 : 1
        anchors {
            left: parent.left
            right: parent.right
            verticalCenter: parent.verticalCenter
            leftMargin: 3 * Theme.unit
            rightMargin: 1.5 * Theme.unit
        }

        RowLayout {
            spacing: Theme.unit

            Text {
                text: card.model.title
                textFormat: Text.PlainText
                font.pixelSize: Theme.bodySize
                font.weight: Font.DemiBold
                color: Theme.ink
                elide: Text.ElideRight
                Layout.fillWidth: true
            }

            Text {
                text: card.model.hidden ? "hidden" : card.model.columns > 1 ? card.model.columns + " columns" : ""
                font.pixelSize: Theme.captionSize
                color: Theme.inkFaint
            }

            Text {
                text: "+"
                font.pixelSize: Theme.titleSize
                color: add.hovered ? Theme.accent : Theme.inkFaint

                HoverHandler {
                    id: add
                }

                TapHandler {
                    onTapped: chips.add()
                }
            }
        }

        Text {
            visible: text.length > 0
            text: card.model.text
            textFormat: Text.PlainText
            font.pixelSize: Theme.captionSize
            color: Theme.inkSoft
            wrapMode: Text.Wrap
            Layout.fillWidth: true
        }

        BlockChips {
            id: chips
            visible: implicitHeight > 0
            blockId: card.model.id
            Layout.fillWidth: true
        }
    }
}
