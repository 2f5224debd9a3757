// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Window 2.15
import vorrel.data.Core 1.0
import vorrel.Ui 1.0 as Ui

Window {
    id: window

    required property url serviceUrl
    property string picture: "" // a PNG file to draw the window into, or empty

    property Schema schema: null
    property var exhibit: null
    readonly property var variables: [
        { type: "string", name: "Motto", properties: { string: "Light for everyone" }, value: "Made of paper" },
        { type: "string", name: "Story", properties: { multiline: true }, value: "Folded by hand.\nLit from within." },
        { type: "integer", name: "Width", properties: { minimum: 10, maximum: 200, unit: "cm" }, value: 85 },
        { type: "real", name: "Weight", properties: { minimum: 0, maximum: 20, unit: "kg", decimals: 1 }, value: 2.4 },
        { type: "boolean", name: "On loan", properties: {}, value: true },
        { type: "enumeration", name: "Material", properties: {}, value: 1, entries: ["Wood", "Paper", "Glass"] },
        { type: "color", name: "Colour", properties: {}, value: "#d9822b" },
        { type: "url", name: "Home page", properties: {}, value: "https://example.com/lamps" },
        { type: "time", name: "Lit from", properties: {}, value: "18:30:00" },
        { type: "productlink", name: "On sale as", properties: {}, value: "lamp" },
        { type: "medialink", name: "Photograph", properties: {}, value: null },
        { type: "documentlink", name: "Described in", properties: {}, value: null },
        { type: "date", name: "Shown until", properties: {}, value: "2027-05-31" }
    ]

    width: 1100
    height: 700
    visible: true
    title: "An exhibit with values that its users define"
    color: "#f5f4f0"

    EditContext {
        id: context
        serviceUrl: window.serviceUrl
        database: "sample"
        changeFeedMonitorType: Context.NullMonitor
        onSaved: success => {
            console.log(success ? "Saved" : "Not saved")
            if (window.picture !== "")
                frame.grabToImage(result => Qt.exit(result.saveToFile(window.picture) && success ? 0 : 1))
        }
    }

    Shortcut {
        sequence: "Ctrl+Z"
        enabled: context.canUndo
        onActivated: context.undo()
    }

    // What users do in an editor of schemas.
    function build() {
        const made = context.createDocument("schema")
        made.label = "Exhibit"
        variables.forEach(wanted => {
            const variable = made.insertVariable("schemavariable:" + wanted.type)
            variable.name = wanted.name
            Object.assign(variable, wanted.properties)
            for (const entry of wanted.entries || [])
                variable.addEntry(entry)
        })
        return made
    }

    // What users do in the editors of values.
    function fill() {
        const lamp = context.createDocument("product")
        lamp.name = "Paper lamp"
        for (let i = 0; i < cards.count; ++i) {
            const value = variables[i].value === "lamp" ? lamp : variables[i].value
            if (value !== null)
                cards.itemAt(i).editor.edited.edit(value)
        }
    }

    Component.onCompleted: {
        schema = build()
        exhibit = context.createDocument("exhibit")
        exhibit.values.setSchema(schema)
        if (picture !== "") {
            fill()
            start.start()
        }
    }

    // Later, when the layouts have settled.
    Timer {
        id: start
        interval: 200
        onTriggered: context.saveLocalChanges()
    }

    Rectangle {
        id: frame
        anchors.fill: parent
        color: window.color

        Flow {
            anchors.fill: parent
            anchors.margins: 16
            spacing: 12
            flow: Flow.TopToBottom

            Repeater {
                id: cards
                model: window.exhibit
                    ? Array.from(window.schema.variables).map(
                          variable => ({ variable: variable, store: window.exhibit.values }))
                    : []
                delegate: Card { }
            }

            Ui.Button {
                text: "Save"
                enabled: context.canSave
                onClicked: context.saveLocalChanges()
            }
        }
    }
}
