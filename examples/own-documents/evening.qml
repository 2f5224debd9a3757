// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQml 2.15

QtObject {
    required property var playlist
    readonly property string summary:
        `${playlist.name}: ${playlist.entries.length} entries, ${playlist.duration} seconds`

    onSummaryChanged: console.log(summary)

    Component.onCompleted: {
        const last = playlist.addEntry("Good night");
        last.seconds = 5;
        playlist.name = "A long evening";
    }
}
