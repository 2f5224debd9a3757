// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/context/documentcache.h>

#include <vorrel/core/locations.h>
#include <vorrel/data/base/clock_p.h>
#include <vorrel/data/base/durablefile_p.h>
#include <vorrel/data/base/jsonkeys_p.h>
#include <vorrel/data/base/jsonslices_p.h>
#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/base/tuning_p.h>
#include <vorrel/data/context/cachefile_p.h>
#include <vorrel/data/context/cachetable_p.h>

#include <QtCore/QHash>
#include <QtCore/QJsonDocument>
#include <QtCore/QWeakPointer>

namespace vo::data {

namespace {

quint32 minutesNow()
{
    constexpr qint64 msecsPerMinute = 60000;
    return quint32(Clock::instance().currentMSecsSinceEpoch() / msecsPerMinute);
}

std::string_view view(const QByteArray &bytes)
{
    return { bytes.constData(), size_t(bytes.size()) };
}

// One name, whatever the database is called. The names that CouchDB allows stay, but for a slash.
QString directoryName(const QString &database)
{
    constexpr std::string_view kept = "abcdefghijklmnopqrstuvwxyz0123456789_$()+-";
    QByteArray name;
    for (const char byte : database.toUtf8()) {
        if (kept.find(byte) != std::string_view::npos) {
            name += byte;
        } else {
            name += '%' + QByteArray(1, byte).toHex().toUpper();
        }
    }
    return name.isEmpty() ? QStringLiteral("%") : QString::fromLatin1(name);
}

} // namespace

struct DocumentCache::Private
{
    const QString database;
    CacheTable table {};
    bool dirty = false;

    [[nodiscard]] int find(const QString &id) const { return table.find(view(id.toLatin1())); }

    QJsonObject read(int position);
    void put(const QString &id, const QByteArray &json);
    void remove(int position);
};

QSharedPointer<DocumentCache> DocumentCache::getCache(const QString &database)
{
    static QHash<QString, QWeakPointer<DocumentCache>> caches;
    QWeakPointer<DocumentCache> &known = caches[database];
    QSharedPointer<DocumentCache> cache = known.toStrongRef();
    if (!cache) {
        cache = QSharedPointer<DocumentCache>::create(database);
        cache->load();
        known = cache;
    }
    return cache;
}

DocumentCache::DocumentCache(const QString &database)
    : d(new Private { database })
{ }

DocumentCache::~DocumentCache() = default;

// The file

QString DocumentCache::cacheFile() const
{
    const QString directory = Locations::cacheLocation().filePath(directoryName(d->database));
    durablefile::makeDirectory(directory);
    return directory + QStringLiteral("/docs.cache");
}

void DocumentCache::load()
{
    d->table = cachefile::load(cacheFile());
    d->dirty = false;
}

void DocumentCache::store()
{
    if (!d->dirty) {
        return;
    }
    compact();
    d->dirty = false;
    cachefile::store(cacheFile(), d->table.snapshot());
}

void DocumentCache::compact()
{
    if (d->table.garbage() >= tuning::cacheGarbageForStore) {
        d->table.compact();
    }
}

// Documents

int DocumentCache::count() const
{
    return d->table.size();
}

qint64 DocumentCache::blockSize() const
{
    return d->table.blockSize();
}

bool DocumentCache::contains(const QString &id) const
{
    return d->find(id) >= 0;
}

QJsonObject DocumentCache::insert(const QString &id, const QByteArray &json)
{
    qCDebug(lcDocCache, "Inserting document %s into cache", qPrintable(id));
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError) {
        qCCritical(lcDocCache, "Failed to parse JSON: %s", qPrintable(error.errorString()));
        return {};
    }
    d->put(id, json);
    return document.object();
}

void DocumentCache::insert(const QString &id, const QJsonObject &object)
{
    qCDebug(lcDocCache, "Inserting document %s into cache", qPrintable(id));
    d->put(id, QJsonDocument(object).toJson(QJsonDocument::Compact));
}

void DocumentCache::Private::put(const QString &id, const QByteArray &json)
{
    table.insert(view(id.toLatin1()), view(json), minutesNow());
    dirty = true;
    if (table.garbage() > tuning::cacheGarbageAtOnce && table.garbage() > table.blockSize() / 2) {
        table.compact();
    }
}

QJsonObject DocumentCache::find(const QString &id)
{
    const int position = d->find(id);
    if (position < 0) {
        qCDebug(lcDocCache, "Cache miss for document %s", qPrintable(id));
        return {};
    }
    qCDebug(lcDocCache, "Found document %s in cache", qPrintable(id));
    return d->read(position);
}

QList<QJsonObject> DocumentCache::find(const QStringList &ids)
{
    QList<QJsonObject> objects;
    for (const QString &id : ids) {
        const int position = d->find(id);
        if (position >= 0) {
            objects.append(d->read(position));
        }
    }
    return objects;
}

QJsonObject DocumentCache::Private::read(int position)
{
    const std::string_view json = table.json(position);
    QJsonParseError error;
    QJsonDocument document =
        QJsonDocument::fromJson(QByteArray::fromRawData(json.data(), int(json.size())), &error);
    if (!document.isObject()) {
        qCCritical(lcDocCache, "Failed to parse JSON: %s",
                   error.error == QJsonParseError::NoError ? "not an object"
                                                           : qPrintable(error.errorString()));
        table.remove(position);
        return {};
    }
    table.setAccessTime(position, minutesNow());
    QJsonObject object = document.object();
    document = QJsonDocument(); // so that the mark does not copy the whole object
    object.insert(jsonkeys::wasCached, true);
    return object;
}

void DocumentCache::invalidate(const QString &id)
{
    qCDebug(lcDocCache, "Invalidating cache entry for %s", qPrintable(id));
    d->remove(d->find(id));
    d->dirty = true;
}

void DocumentCache::Private::remove(int position)
{
    if (position >= 0) {
        table.remove(position);
    }
}

void DocumentCache::invalidate(const QString &id, const QString &revision)
{
    const int position = d->find(id);
    if (position < 0) {
        return;
    }
    const std::string_view json = d->table.json(position);
    const QByteArray text = QByteArray::fromRawData(json.data(), int(json.size()));
    if (JsonSlices::toString(JsonSlices::member(text, jsonkeys::revision)) != revision) {
        invalidate(id);
    }
}

} // namespace vo::data
