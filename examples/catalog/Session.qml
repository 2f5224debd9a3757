// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
pragma Singleton
import QtQuick 2.15
import vorrel.data.Core 1.0

// What all parts of the window share.
QtObject {
    // The document that is shown on the right.
    property LinkedDocument current: null

    // All documents.
    property Catalogue catalogue: null

    // When the window opened: what was edited later was edited here.
    readonly property date opened: new Date()
}
