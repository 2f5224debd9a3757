// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/base/jsonkeys_p.h>
#include <vorrel/data/core/accesscontroller.h>
#include <vorrel/data/core/documentstore_p.h>
#include <vorrel/data/core/linkeddocument.h>
#include <vorrel/data/properties/property.h>

#include <QtCore/QHash>
#include <QtCore/QPointer>
#include <QtCore/QVector>

namespace vo::data {

/// Calls \p function for each text in the structs of free-form data, with the text and iterators at
/// its struct and its field. Every document is walked when it is built, so that a key is only made
/// into a string if somebody wants it.
template <typename Function>
void forEachStructText(const QJsonObject &data, Function function)
{
    for (auto it = data.begin(); it != data.end(); ++it) {
        if (it.key().startsWith(jsonkeys::structPrefix)) {
            const QJsonObject fields = it.value().toObject();
            for (auto field = fields.begin(); field != fields.end(); ++field) {
                if (field.value().isString()) {
                    function(field.value().toString(), it, field);
                }
            }
        }
    }
}

/// The name of the struct that the iterator of forEachStructText() is at.
inline QString structName(QJsonObject::const_iterator it)
{
    return it.key().mid(jsonkeys::structPrefix.size());
}

struct LinkedDocument::Private
{
    /// A property of \a owner that points here.
    struct DeleteHandler
    {
        IDeleteHandler *handler;
        const Document *owner;
    };

    Private(LinkedDocument *document, Context *owner);

    LinkedDocument *const q;
    Context *const context;
    DocumentStore &store;
    mutable QByteArray id;           // made on first demand
    QByteArray revision;             // empty: never stored
    qint64 created;                  // ms since the epoch
    mutable QString creationVersion; // of the library that last wrote the document
    qint64 edited = 0;               // ms since the epoch
    int changeSequence = 0;          // edits since the last save; above 0 means dirty
    QSet<QByteArray> currentAttachments;
    QJsonObject data;
    QHash<QString, int> referenceCounts;                          // by reference text
    QHash<QByteArray, QPointer<LinkedDocument>> linkedReferences; // attached for a reference
    QVector<DeleteHandler> deleteHandlers;
    mutable std::unique_ptr<AccessController> accessController; // made on first demand
    Property<bool> deleted;
    Property<QString> label;
    AccessLevel accessLevel = UnknownAccess;
    bool accessUpdatePending = true;
    bool accessInQuestion = false; // the first answer is being looked for
    bool implicitRead = false;
    bool changeReportPending = false;
    bool dependencyUpdatePending = false;
};

} // namespace vo::data
