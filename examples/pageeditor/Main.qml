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
    title: Session.document ? Session.document.label : "Page"
    color: Theme.background

    EditContext {
        id: context
        serviceUrl: window.serviceUrl
        database: window.database
        followsRemoteEdits: true
        Component.onCompleted: Session.context = this
    }

    EditShortcuts {
        context: context
    }

    Picture {
        file: window.picture
        subject: frame
        ready: inspector.block.listParent !== ""
        obstacle: "There is no “" + Session.documentId + "”."
    }

    Rectangle {
        id: frame
        anchors.fill: parent
        color: Theme.background

        ColumnLayout {
            anchors.fill: parent
            spacing: 0

            Rectangle {
                implicitHeight: 64
                color: Theme.surface
                Layout.fillWidth: true

                RowLayout {
                    anchors.fill: parent
                    anchors.leftMargin: 3 * Theme.unit
                    anchors.rightMargin: 3 * Theme.unit
                    spacing: 2 * Theme.unit

                    Text {
                        text: window.title
                        font.pixelSize: Theme.titleSize
                        font.weight: Font.DemiBold
                        color: Theme.ink
                        elide: Text.ElideRight
                        Layout.fillWidth: true
                    }

                    TextField {
                        placeholderText: "Search titles"
                        selectByMouse: true
                        onTextEdited: Session.search = text
                    }

                    EditButtons {
                        context: context
                    }
                }

                Rectangle {
                    anchors.bottom: parent.bottom
                    width: parent.width
                    height: 1
                    color: Theme.line
                }
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
                spacing: 3 * Theme.unit
                Layout.leftMargin: 3 * Theme.unit

                BlockList {
                    key: "page"
                    title: "Page"
                    Layout.topMargin: 2 * Theme.unit
                    Layout.fillHeight: true
                    Layout.fillWidth: true
                }

                BlockList {
                    key: "shelf"
                    title: "Shelf"
                    Layout.topMargin: 2 * Theme.unit
                    Layout.fillHeight: true
                    Layout.fillWidth: false
                    Layout.preferredWidth: 300
                }

                Inspector {
                    id: inspector
                    Layout.fillHeight: true
                    Layout.preferredWidth: 320
                }
            }
        }
    }
}
