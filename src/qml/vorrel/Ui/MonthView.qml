// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Layouts 1.15

// The days of a month, to choose one. Days are texts like "2027-05-31".
ColumnLayout {
    id: view

    property string day: ""
    property bool readOnly: false

    signal requested(string day)

    property int year: 0
    property int month: 0 // from 0

    // Noon, so that no time zone makes another day of it.
    readonly property date first: new Date(year, month, 1, 12)
    readonly property int lead: (first.getDay() + 6) % 7
    readonly property int length: new Date(year, month + 1, 0, 12).getDate()

    function name(number) {
        const two = n => String(n).padStart(2, "0")
        return String(year).padStart(4, "0") + "-" + two(month + 1) + "-" + two(number)
    }

    function turn(months) {
        const other = new Date(year, month + months, 1, 12)
        year = other.getFullYear()
        month = other.getMonth()
    }

    function show() {
        const parts = day.split("-")
        const today = new Date()
        year = parts.length === 3 ? Number(parts[0]) : today.getFullYear()
        month = parts.length === 3 ? Number(parts[1]) - 1 : today.getMonth()
    }

    onDayChanged: show()
    Component.onCompleted: show()
    spacing: 2

    RowLayout {
        Button {
            objectName: "previous"
            text: "‹"
            onClicked: view.turn(-1)
        }

        Text {
            text: Qt.formatDate(view.first, "MMMM yyyy")
            font.pixelSize: Theme.fontSize
            color: Theme.ink
            horizontalAlignment: Text.AlignHCenter
            Layout.fillWidth: true
        }

        Button {
            objectName: "next"
            text: "›"
            onClicked: view.turn(1)
        }
    }

    Grid {
        columns: 7
        spacing: 1

        Repeater {
            model: view.lead

            Item {
                width: Theme.controlHeight
                height: Theme.controlHeight
            }
        }

        Repeater {
            model: Array.from({ length: view.length },
                              (none, index) => ({ number: index + 1, view: view }))
            delegate: DayButton { }
        }
    }
}
