// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/models/documentfilter.h>
#include <vorrel/data/models/documentsorter.h>

#include <QtQml/QQmlListReference>

namespace vo::test {

/// The objects in a list property.
template <typename T = QObject>
QList<T *> listed(QObject *object, const char *property)
{
    QList<T *> list;
    const QQmlListReference reference(object, property);
    for (int i = 0; i < reference.count(); ++i) {
        list << static_cast<T *>(reference.at(i));
    }
    return list;
}

/// The ids of a list of documents behind a stroke; "0" for null.
QString idsOf(QObject *object, const char *property);

/// Appends to the list property of documents, or gives it others, as QML does.
void append(QObject *owner, const QList<data::Document *> &documents);
void refill(QObject *owner, const QList<data::Document *> &documents);

/// What \p sorter has to make of the result of \p filter, without a function of either. For
/// criteria of texts, numbers (equal), groups and types (by name).
QList<data::Document *> naiveRows(data::DocumentFilter *filter, data::DocumentSorter *sorter);

} // namespace vo::test
