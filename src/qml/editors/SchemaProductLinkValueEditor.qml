// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import "parts"

// Edits a link to a product.
ValueEditor {
    id: editor

    LinkEditor {
        edited: editor.edited
        types: ["product"]
    }
}
