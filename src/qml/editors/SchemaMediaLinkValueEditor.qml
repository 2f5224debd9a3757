// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import "parts"

// Edits a link to an image, a video or a PDF file.
ValueEditor {
    id: editor

    LinkEditor {
        edited: editor.edited
        types: ["asset:image", "asset:video", "asset:pdf"]
    }
}
