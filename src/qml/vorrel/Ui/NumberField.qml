// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Layouts 1.15

// A number within bounds, to type or to step. It only asks for another number: whoever uses it
// decides, and sets value.
RowLayout {
    id: field

    property real value: 0
    property real from: -1.7976931348623157e308
    property real to: 1.7976931348623157e308
    property real stepSize: 1
    property int decimals: 0
    property string unit: ""
    property bool readOnly: false
    readonly property alias input: input

    signal requested(real number)

    // A fixed number of decimals, unless that would be a very long text.
    readonly property string shown: Math.abs(value) < 1e15
        ? value.toFixed(Math.max(0, Math.min(decimals, 20))) : String(value)

    function follow() {
        input.text = Qt.binding(() => field.shown)
    }

    function step(distance) {
        requested(Math.max(from, Math.min(to, value + distance)))
        follow()
    }

    spacing: 2

    TextField {
        id: input
        objectName: "input"
        text: field.shown
        readOnly: field.readOnly
        horizontalAlignment: TextInput.AlignRight
        inputMethodHints: Qt.ImhFormattedNumbersOnly
        Layout.fillWidth: true
        onTextEdited: error = false
        onEditingFinished: {
            const number = text.trim() === "" ? NaN : Number(text.replace(",", "."))
            error = isNaN(number)
            if (error || text === field.shown)
                return
            field.requested(number)
            field.follow()
        }
        Keys.onEscapePressed: {
            error = false
            field.follow()
        }
        Keys.onUpPressed: if (!readOnly) field.step(field.stepSize)
        Keys.onDownPressed: if (!readOnly) field.step(-field.stepSize)
    }

    Text {
        text: field.unit
        textFormat: Text.PlainText
        font.pixelSize: Theme.fontSize
        color: Theme.inkSoft
        Layout.leftMargin: text ? 2 : 0
        Layout.rightMargin: text ? 4 : 0
    }

    Button {
        objectName: "less"
        text: "−"
        enabled: !field.readOnly && field.value > field.from
        autoRepeat: true
        onClicked: field.step(-field.stepSize)
    }

    Button {
        objectName: "more"
        text: "+"
        enabled: !field.readOnly && field.value < field.to
        autoRepeat: true
        onClicked: field.step(field.stepSize)
    }
}
