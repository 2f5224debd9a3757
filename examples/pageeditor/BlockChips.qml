// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import "../kit"

// The blocks inside of a block.
Flow {
    id: chips

    required property string blockId

    function add() {
        Session.selected = blocks.append({ "title": "Part " + (blocks.count + 1) })
        blocks.commit()
    }

    spacing: Theme.unit / 2

    Blocks {
        id: blocks
        key: Session.nestedList(chips.blockId)
    }

    Repeater {
        model: blocks

        delegate: Rectangle {
            id: chip

            required property var model

            implicitWidth: title.implicitWidth + 28
            implicitHeight: 24
            radius: 12
            color: chip.model.id === Session.selected ? Theme.accentSoft : Theme.background
            border.color: chip.model.id === Session.selected ? Theme.accent : Theme.line

            Rectangle {
                x: 8
                anchors.verticalCenter: parent.verticalCenter
                width: 8
                height: 8
                radius: 4
                color: chip.model.tint
            }

            Text {
                id: title
                x: 21
                anchors.verticalCenter: parent.verticalCenter
                text: chip.model.title
                textFormat: Text.PlainText
                font.pixelSize: Theme.captionSize
                color: Theme.ink
            }

            TapHandler {
                onTapped: Session.selected = chip.model.id
            }
        }
    }
}
