// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15

// Draws an item into a file as soon as it is ready, and ends the program: with 1 if that takes too
// long or fails.
Item {
    id: picture

    required property string file
    required property Item subject
    required property bool ready
    required property string obstacle
    readonly property bool due: file !== "" && ready

    function draw() {
        const started = subject.grabToImage(result => finish(result.saveToFile(file)))
        if (!started)
            finish(false)
    }

    function finish(saved: bool) {
        if (!saved)
            console.error("Cannot write " + file)
        Qt.exit(saved ? 0 : 1)
    }

    // Later, when the layouts have settled.
    Timer {
        interval: 50
        running: picture.due
        onTriggered: picture.draw()
    }

    Timer {
        interval: 60000
        running: picture.file !== ""
        onTriggered: {
            console.error("Nothing to draw after " + interval / 1000 + " s: " + picture.obstacle)
            Qt.exit(1)
        }
    }
}
