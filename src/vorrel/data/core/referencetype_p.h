// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QHash>
#include <QtCore/QObject>

#include <functional>

namespace vo::data {

class LinkedDocument;

/// A kind of object that free-form data can refer to, as "$ref(<type>,<id>)".
struct ReferenceType
{
    const QMetaObject *metaObject; // of the referable class
    int type;                      // the number in the reference text
    std::function<QByteArray(const QObject *object)> id;

    /// Whether \a owner may refer to the object.
    std::function<bool(LinkedDocument *owner, const QByteArray &id)> accepts;

    /// Adds an object that may not be built yet: it is not built for this.
    std::function<void(LinkedDocument *owner, const QByteArray &id)> attachById;
    std::function<void(LinkedDocument *owner, QObject *object)> add;
    std::function<void(LinkedDocument *owner, const QByteArray &id)> remove;
    std::function<QObject *(const LinkedDocument *owner, const QByteArray &id)> resolve;
    bool counted; // stands in the "references" of the stored document

    /// All kinds, by number.
    static const QHash<int, const ReferenceType *> &all();

    /// The kind of number \p type, or null.
    static const ReferenceType *find(int type) { return all().value(type); }
};

} // namespace vo::data
