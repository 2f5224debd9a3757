// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import "../kit"

// Edits the selected block.
Rectangle {
    id: inspector

    readonly property alias block: block

    color: Theme.surface

    Block {
        id: block
        key: Session.selected
    }

    ColumnLayout {
        visible: block.listParent !== ""
        spacing: Theme.unit
        anchors {
            left: parent.left
            right: parent.right
            top: parent.top
            margins: 3 * Theme.unit
        }

        Text {
            text: "Block"
            font.pixelSize: Theme.titleSize
            font.weight: Font.DemiBold
            color: Theme.ink
        }

        FieldCaption {
            text: "Title"
        }

        TextField {
            text: block.$.title || ""
            selectByMouse: true
            onTextEdited: block.$.title = text
            Layout.fillWidth: true
        }

        FieldCaption {
            text: "Text"
        }

        TextField {
            text: block.$.text || ""
            selectByMouse: true
            onTextEdited: block.$.text = text
            Layout.fillWidth: true
        }

        FieldCaption {
            text: "Colour"
        }

        Row {
            spacing: Theme.unit

            Swatch {
                block: inspector.block
                color: "#2f5d50"
            }

            Swatch {
                block: inspector.block
                color: "#3f7ca3"
            }

            Swatch {
                block: inspector.block
                color: "#7b6aa8"
            }

            Swatch {
                block: inspector.block
                color: "#b3902f"
            }

            Swatch {
                block: inspector.block
                color: "#b86f3c"
            }

            Swatch {
                block: inspector.block
                color: "#a3423a"
            }
        }

        FieldCaption {
            text: "Columns"
        }

        Row {
            spacing: Theme.unit

            Choice {
                text: "1"
                checked: block.$.columns === 1
                onClicked: block.$.columns = 1
            }

            Choice {
                text: "2"
                checked: block.$.columns === 2
                onClicked: block.$.columns = 2
            }

            Choice {
                text: "3"
                checked: block.$.columns === 3
                onClicked: block.$.columns = 3
            }

            Choice {
                text: "4"
                checked: block.$.columns === 4
                onClicked: block.$.columns = 4
            }
        }

        FieldCaption {
            text: "On the page"
        }

        Choice {
            text: "Hidden"
            checked: block.$.hidden === true
            onClicked: block.$.hidden = !block.$.hidden
        }

        RowLayout {
            spacing: Theme.unit
            Layout.topMargin: Theme.unit

            ActionButton {
                text: "Commit"
                primary: true
                enabled: block.canCommit
                onClicked: block.commit()
            }

            ActionButton {
                text: "Revert"
                enabled: block.canCommit
                onClicked: block.revert()
            }

            Text {
                text: block.canCommit ? "Not in the page yet" : ""
                font.pixelSize: Theme.captionSize
                color: Theme.edited
                elide: Text.ElideRight
                Layout.fillWidth: true
            }
        }

        ActionButton {
            text: "Remove block"
            onClicked: Session.document.removeListItem(block.listParent, block.key)
        }
    }

    Text {
        visible: block.listParent === ""
        anchors.centerIn: parent
        text: "Select a block"
        font.pixelSize: Theme.bodySize
        color: Theme.inkFaint
    }
}
