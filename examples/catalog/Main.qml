// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import vorrel.data.Core 1.0
import "../kit"

ApplicationWindow {
    id: window

    required property url serviceUrl
    required property string database

    // A PNG file to draw the window into, instead of leaving it open; empty for none.
    property string picture: ""

    width: 1100
    height: 720
    minimumWidth: 820
    minimumHeight: 480
    visible: true
    title: catalogue.title || window.database
    color: Theme.background

    EditContext {
        id: context
        serviceUrl: window.serviceUrl
        database: window.database
        followsRemoteEdits: true
    }

    EditShortcuts {
        context: context
    }

    Connections {
        target: context
        function onSaved() {
            ++Session.uploads
        }
    }

    // The next start may be without a network. Nothing is written if nothing has changed.
    Timer {
        interval: 3 * 60 * 1000
        running: true
        repeat: true
        onTriggered: context.persistCache()
    }

    Connections {
        target: Qt.application
        function onAboutToQuit() {
            context.persistCache()
        }
    }

    Catalogue {
        id: catalogue
        context: context
        Component.onCompleted: Session.catalogue = this
        onFirstChanged: Session.current = first
    }

    Picture {
        file: window.picture
        subject: frame
        // Without a network the listings never have an answer.
        ready: (catalogue.listed && !context.busy || context.primaryError !== null)
            && Session.current !== null && !list.filter.busy && !list.sorter.busy
        obstacle: notice.title + ". " + notice.text
    }

    Rectangle {
        id: frame
        anchors.fill: parent
        color: Theme.background

        ColumnLayout {
            anchors.fill: parent
            spacing: 0

            Header {
                context: context
                catalogue: catalogue
                Layout.fillWidth: true
            }

            ErrorBanner {
                context: context
                Layout.fillWidth: true
            }

            SaveBanner {
                context: context
                Layout.fillWidth: true
            }

            RowLayout {
                visible: catalogue.progress === "ready"
                spacing: 0

                DocumentList {
                    id: list
                    catalogue: catalogue
                    Layout.preferredWidth: 372
                    Layout.fillHeight: true
                }

                Rectangle {
                    implicitWidth: 1
                    color: Theme.line
                    Layout.fillHeight: true
                }

                ColumnLayout {
                    spacing: 0

                    Loader {
                        active: Session.current !== null
                        Layout.fillWidth: true
                        Layout.fillHeight: true
                        sourceComponent: DocumentView {
                            document: Session.current
                        }
                    }

                    NotePanel {
                        context: context
                        Layout.fillWidth: true
                    }
                }
            }

            Item {
                visible: catalogue.progress !== "ready"
                Layout.fillWidth: true
                Layout.fillHeight: true

                Notice {
                    id: notice
                    anchors.centerIn: parent
                    width: 420
                    busy: catalogue.progress === "loading"
                    title: busy ? "Loading the documents" : "There are no documents in this database"
                    text: busy ? (patience.running ? "" : "The server has not answered yet. The request is repeated until it does.")
                               : "The program devserver/fill.js puts the sample content there."

                    Timer {
                        id: patience
                        interval: 4000
                        running: true
                    }
                }
            }
        }
    }
}
