// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Templates 2.15 as T

// A text in the list of a ComboBox.
T.ItemDelegate {
    id: row

    required property var modelData

    width: ListView.view ? ListView.view.width : Theme.fieldWidth
    implicitHeight: Theme.controlHeight
    leftPadding: Theme.spacing
    text: modelData
    font.pixelSize: Theme.fontSize
    hoverEnabled: true
    highlighted: ListView.isCurrentItem

    contentItem: Text {
        text: row.text
        textFormat: Text.PlainText
        font: row.font
        color: row.highlighted ? Theme.accentInk : Theme.ink
        elide: Text.ElideRight
        verticalAlignment: Text.AlignVCenter
    }

    background: Rectangle {
        color: row.highlighted ? Theme.accent : Theme.surface
    }
}
