// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Layouts 1.15
import QtQuick.Window 2.15
import vorrel.data.Core 1.0
import "../kit"

// A list of blocks, which can be dragged to another place in it or to another list. Each drop is
// one step of undo.
ColumnLayout {
    id: list

    required property string key
    required property string title
    readonly property alias blocks: blocks

    function add() {
        Session.selected = blocks.append({ "title": "Block " + (blocks.count + 1) })
        blocks.commit()
    }

    // Takes a block of any list to the place of another one, or behind that; without one, to the
    // end.
    function take(source: Blocks, id: string, target: string, behind: bool) {
        if (source === blocks) {
            if (!target)
                blocks.move(id, blocks.count - 1)
            else if (behind)
                blocks.moveAfter(id, target)
            else
                blocks.moveBefore(id, target)
        } else {
            const row = Session.document.getList(key).indexOf(target)
            source.migrate(key, id, row < 0 ? -1 : behind ? row + 1 : row)
        }
        source.commit()
    }

    spacing: Theme.unit

    Blocks {
        id: blocks
        key: list.key
    }

    RowLayout {
        spacing: Theme.unit

        Text {
            text: list.title
            font.pixelSize: Theme.titleSize
            font.weight: Font.DemiBold
            color: Theme.ink
        }

        Text {
            text: found.count === blocks.count ? blocks.count : found.count + " of " + blocks.count
            font.pixelSize: Theme.bodySize
            color: Theme.inkFaint
            Layout.fillWidth: true
        }

        ActionButton {
            text: "Add"
            onClicked: list.add()
        }
    }

    Item {
        Layout.fillWidth: true
        Layout.fillHeight: true

        // Below the last block.
        DropArea {
            anchors.fill: parent
            keys: ["block"]
            onDropped: function(drop) {
                drop.source.dropOn(list, "", true)
            }
        }

        ListView {
            anchors.fill: parent
            clip: true
            spacing: Theme.unit

            model: DataFilterModel {
                id: found
                sourceModel: blocks

                StringDataFilter {
                    role: "title"
                    contains: Session.search
                }
            }

            moveDisplaced: Transition {
                NumberAnimation {
                    property: "y"
                    duration: 150
                }
            }

            delegate: MouseArea {
                id: slot

                required property var model

                // Later, since it may end this item.
                function dropOn(target, id, behind) {
                    Qt.callLater(target.take, blocks, model.id, id, behind)
                }

                width: ListView.view.width
                height: card.height
                drag.target: card
                drag.smoothed: false
                preventStealing: true
                onPressed: function(mouse) {
                    Session.selected = model.id
                    card.Drag.hotSpot = Qt.point(mouse.x, mouse.y)
                }
                onReleased: {
                    card.Drag.drop()
                    card.x = 0
                    card.y = 0
                }

                DropArea {
                    id: area

                    readonly property bool behind: drag.y > height / 2

                    anchors.fill: parent
                    keys: ["block"]
                    onDropped: function(drop) {
                        drop.source.dropOn(list, slot.model.id, behind)
                    }
                }

                Rectangle {
                    visible: area.containsDrag
                    y: area.behind ? parent.height + 3 : -5
                    width: parent.width
                    height: 2
                    color: Theme.accent
                }

                BlockCard {
                    id: card

                    width: slot.width
                    model: slot.model
                    Drag.active: slot.drag.active
                    Drag.source: slot
                    Drag.keys: ["block"]

                    states: State {
                        when: slot.drag.active

                        ParentChange {
                            target: card
                            parent: slot.Window.contentItem
                        }
                        PropertyChanges {
                            target: card
                            opacity: 0.9
                        }
                    }
                }
            }
        }
    }
}
