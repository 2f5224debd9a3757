// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import vorrel.data.Core 1.0

// One block of the page. Its edits wait until they are committed.
DataStruct {
    document: Session.document

    StringField {
        name: "title"
        defaultValue: "Untitled"
    }
    StringField {
        name: "text"
    }
    ColorField {
        name: "tint"
        defaultValue: "#2f5d50"
    }
    IntegerField {
        name: "columns"
        minimum: 1
        maximum: 4
        defaultValue: 1
    }
    BooleanField {
        name: "hidden"
    }
}
