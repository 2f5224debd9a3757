// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import "../kit"

// A card with a title and a row for each field.
Control {
    id: table

    required property var modelData
    readonly property bool wide: modelData.wide

    padding: 2 * Theme.unit
    bottomPadding: Theme.unit

    background: Rectangle {
        radius: Theme.radius
        color: Theme.surface
        border.color: Theme.line
    }

    contentItem: ColumnLayout {
        spacing: Theme.unit

        Text {
            text: table.modelData.title.toUpperCase()
            font.pixelSize: Theme.captionSize
            font.letterSpacing: 1
            color: Theme.inkFaint
            Layout.bottomMargin: 2
        }

        Repeater {
            model: table.modelData.fields

            delegate: FieldRow {
                Layout.fillWidth: true
            }
        }

        // Takes the rest where a neighbour has more rows.
        Item {
            Layout.fillHeight: true
        }
    }
}
