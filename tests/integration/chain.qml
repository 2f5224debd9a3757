// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQml 2.15
import vorrel.data.Core 1.0

// From the database to what a view shows.
QtObject {
    id: chain

    required property Context context
    required property string kind

    readonly property TypeListing listing: TypeListing {
        context: chain.context
        type: chain.kind
    }
    readonly property DocumentFilter filter: DocumentFilter {
        documents: chain.listing.documents
        StringFilterCriterion {
            property: "documentId"
            contains: "sample"
        }
    }
    readonly property DocumentSorter sorter: DocumentSorter {
        documents: chain.filter.result
        StringSortCriterion {
            property: "label"
        }
    }
    readonly property DocumentModel model: DocumentModel {
        documents: chain.sorter.result
    }
}
