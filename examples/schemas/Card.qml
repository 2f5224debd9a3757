// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Layouts 1.15
import vorrel.data.Core 1.0
import vorrel.Ui 1.0 as Ui

// A variable with its two editors: modelData has it, and the store of the value.
Rectangle {
    id: card

    required property var modelData
    readonly property SchemaVariable variable: modelData.variable

    // The large one.
    readonly property var editor: large.item

    width: 258
    implicitHeight: column.implicitHeight + 4 * Ui.Theme.spacing
    radius: Ui.Theme.radius
    color: Ui.Theme.surface
    border.color: Ui.Theme.line

    function connect(editor) {
        editor.store = modelData.store
        editor.variable = variable
    }

    ColumnLayout {
        id: column
        anchors.fill: parent
        anchors.margins: 2 * Ui.Theme.spacing
        spacing: Ui.Theme.spacing

        Text {
            text: card.variable.name
            font.pixelSize: Ui.Theme.fontSize
            font.bold: true
            color: Ui.Theme.ink
        }

        Loader {
            id: large
            sourceComponent: card.variable.getEditorComponent(SchemaVariable.ValueEditor)
            onLoaded: card.connect(item)
            Layout.fillWidth: true
        }

        Text {
            visible: condensed.visible
            text: "Condensed"
            font.pixelSize: 11
            color: Ui.Theme.inkFaint
        }

        Loader {
            id: condensed
            readonly property Component component:
                card.variable.getEditorComponent(SchemaVariable.CondensedValueEditor)
            sourceComponent: component
            visible: component.url !== large.sourceComponent.url
            active: visible
            onLoaded: card.connect(item)
            Layout.fillWidth: true
        }

        Item {
            Layout.fillHeight: true
        }
    }
}
