// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15

// Says why there is nothing to see.
ColumnLayout {
    id: notice

    property string title: ""
    property string text: ""
    property bool busy: false

    spacing: Theme.unit

    BusyIndicator {
        visible: notice.busy
        running: notice.busy
        implicitWidth: 40
        implicitHeight: 40
        Layout.alignment: Qt.AlignHCenter
    }

    Text {
        text: notice.title
        font.pixelSize: Theme.titleSize
        color: Theme.ink
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        Layout.fillWidth: true
    }

    Text {
        visible: text.length > 0
        text: notice.text
        font.pixelSize: Theme.bodySize
        lineHeight: 1.3
        color: Theme.inkSoft
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        Layout.fillWidth: true
    }
}
