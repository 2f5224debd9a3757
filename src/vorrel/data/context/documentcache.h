// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/datacoreexport.h>

#include <QtCore/QByteArray>
#include <QtCore/QJsonObject>
#include <QtCore/QList>
#include <QtCore/QSharedPointer>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <memory>

namespace vo::data {

/// The JSON of documents that were fetched from one database, as compact text: in memory and, once
/// stored, in a file, from which they come up without the network. Shared by all Contexts on the
/// same database name, on whatever server, for as long as one of them lives. Main thread only.
///
/// Ids are Latin-1; other characters become question marks. The content ends at some 2 GB: what
/// does not fit is not kept, with one warning. Log lines are in "vorrel.doccache".
class VORREL_DATACORE_EXPORT DocumentCache
{
public:
    /// The one cache of this name, loaded from its file if it has to be made.
    static QSharedPointer<DocumentCache> getCache(const QString &database);

    explicit DocumentCache(const QString &database = QString());

    /// Does not store.
    ~DocumentCache();
    Q_DISABLE_COPY_MOVE(DocumentCache)

    /// The path of the file: "docs.cache" in a directory of Locations::cacheLocation(), which is
    /// made and is for the current user alone. It is called like the database; what cannot be in
    /// the name of one on CouchDB is percent-encoded.
    [[nodiscard]] QString cacheFile() const;

    /// Replaces the content by that of the file. Without a file, or with a file of less than 64
    /// bytes, there is none. Of a damaged file, what comes before the damage is loaded, and a
    /// critical line is logged.
    void load();

    /// Writes the content to the file if it has changed since the last time. The file is written in
    /// the background and replaced as a whole; if that fails, a critical line is logged and the
    /// former file stays. The program may end meanwhile, with or without exit(): it waits for it.
    void store();

    /// Gives the memory of replaced and removed documents back if it is 256 KiB or more.
    void compact();

    /// How many documents there are.
    [[nodiscard]] int count() const;

    /// The bytes that they take in memory, with those of replaced ones until the next compact().
    [[nodiscard]] qint64 blockSize() const;
    [[nodiscard]] bool contains(const QString &id) const;

    /// The document, with "wasCached" set to true. Empty if it is not there or is no JSON object;
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
    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
