// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/datacoreexport.h>

#include <QtCore/QByteArray>
#include <QtCore/QHash>
#include <QtCore/QJsonObject>
#include <QtCore/QList>
#include <QtCore/QSharedPointer>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace vo::data {

/// The JSON of documents that were fetched from one database, as compact text. Shared by all
/// Contexts on the same database name, on whatever server, for as long as one of them lives. Main
/// thread only.
class VORREL_DATACORE_EXPORT DocumentCache
{
public:
    static QSharedPointer<DocumentCache> getCache(const QString &database);

    DocumentCache();
    ~DocumentCache();
    Q_DISABLE_COPY_MOVE(DocumentCache)

    [[nodiscard]] bool contains(const QString &id) const;

    /// The document, with "wasCached" set to true. Empty if it is not there or cannot be parsed;
    /// in the latter case a critical line is logged and the entry is dropped.
    [[nodiscard]] QJsonObject find(const QString &id);

    /// The documents that are there, in the order of \p ids.
    [[nodiscard]] QList<QJsonObject> find(const QStringList &ids);

    /// Stores the bytes as they are, and gives the object that they parse to. What is no JSON is
    /// not stored: the result is empty and a critical line is logged.
    QJsonObject insert(const QString &id, const QByteArray &json);
    void insert(const QString &id, const QJsonObject &object);

    void invalidate(const QString &id);

    /// Removes the document unless it is of this revision.
    void invalidate(const QString &id, const QString &revision);

private:
    struct CacheEntry
    {
        quint32 accessTime = 0; // minutes since the epoch
        quint32 offset = 0;     // in the data block, in bytes
        quint32 idSize = 0;     // bytes
        quint32 dataSize = 0;   // bytes
    };

    using Entries = QHash<QString, CacheEntry>;

    void store(const QString &id, const QByteArray &json);
    QJsonObject read(Entries::iterator entry);

    Entries m_entries;

    // Records of an id followed by its JSON, one behind the other. A replaced record stays as
    // garbage.
    QByteArray m_data;
};

} // namespace vo::data
