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

    // How many uploads have ended.
    property int uploads: 0

    function isUnsaved(document: LinkedDocument): bool {
        // Nothing tells of it directly: it begins with an edit and ends with an upload.
        return uploads >= 0 && document.edited && document.isDirty()
    }
}
