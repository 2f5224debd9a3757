// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import vorrel.data.Core 1.0

// The documents of one type for a DocumentField: modelData has both.
TypeListing {
    required property var modelData

    context: modelData.field.context
    type: modelData.type
    onDocumentsChanged: modelData.field.collect()
}
