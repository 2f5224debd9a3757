// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/core/accesscontroller.h>
#include <vorrel/data/core/documentstore_p.h>
#include <vorrel/data/core/freeformdata_p.h>
#include <vorrel/data/core/linkeddocument.h>
#include <vorrel/data/properties/property.h>

#include <QtCore/QHash>
#include <QtCore/QPointer>
#include <QtCore/QVector>

namespace vo::data {

struct LinkedDocument::Private
{
    /// A property of \a owner that points here.
    struct DeleteHandler
    {
        IDeleteHandler *handler;
        const Document *owner;
    };

    enum MoveKind {
        Move,
        Duplicate,
    };

    Private(LinkedDocument *document, Context *owner);

    // Free-form data. The first two give the data; only the second makes it.
    [[nodiscard]] const FreeFormData &content() const;
    FreeFormData &content();

    /// Undefined below ReadAccess.
    [[nodiscard]] QJsonValue read(const QString &key) const;

    /// Replaces the entries, as stored data.
    void assign(FreeFormEntries entries);

    /// Makes the edit and records it.
    void apply(const FreeFormEdit &edit);
    void write(const QVector<FreeFormEdit::Entry> &entries, bool forward);
    void announce(const QString &key);
    void makeStruct(const QString &key);
    void writeField(const QString &key, const QString &field, const QJsonValue &before,
                    const QJsonValue &after);
    bool moveEntry(const QString &source, const QString &target, MoveKind kind);

    [[nodiscard]] QStringList items(const QString &key) const;
    bool insertBeside(const QString &key, const QStringList &items, const QString &other,
                      int distance);

    /// Adds to the edit what deleteScope() deletes.
    static void deleteScopes(FreeFormEdit &edit, const QStringList &scopes);
    void noteParentChanges(const QHash<QString, QString> &former);
    void scheduleParentNotification();
    [[nodiscard]] QStringList namesInScope(QLatin1String prefix, const QString &scope) const;
    void paste(const QVector<QPair<QString, QJsonValue>> &entries);
    void recountReferences();

    /// Adds to the counts of reference texts, and attaches and detaches what follows.
    void countReferences(const QHash<QString, int> &difference);

    /// Calls \p function with text, struct and field of each; it may edit them.
    void forEachReference(const std::function<void(const QString &text, const QString &key,
                                                   const QString &field)> &function) const;

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
    std::unique_ptr<FreeFormData> freeForm; // null as long as there never was any
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
