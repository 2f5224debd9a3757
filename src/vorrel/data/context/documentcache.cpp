// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/context/documentcache.h>

#include <vorrel/data/base/clock_p.h>
#include <vorrel/data/base/jsonkeys_p.h>
#include <vorrel/data/base/logging_p.h>

#include <QtCore/QJsonDocument>
#include <QtCore/QWeakPointer>

namespace vo::data {

namespace {

quint32 minutesNow()
{
    constexpr qint64 msecsPerMinute = 60000;
    return quint32(Clock::instance().currentMSecsSinceEpoch() / msecsPerMinute);
}

} // namespace

QSharedPointer<DocumentCache> DocumentCache::getCache(const QString &database)
{
    static QHash<QString, QWeakPointer<DocumentCache>> caches;
    QWeakPointer<DocumentCache> &known = caches[database];
    QSharedPointer<DocumentCache> cache = known.toStrongRef();
    if (!cache) {
        cache = QSharedPointer<DocumentCache>::create();
        known = cache;
    }
    return cache;
}

DocumentCache::DocumentCache() = default;

DocumentCache::~DocumentCache() = default;

bool DocumentCache::contains(const QString &id) const
{
    return m_entries.contains(id);
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
    store(id, json);
    return document.object();
}

void DocumentCache::insert(const QString &id, const QJsonObject &object)
{
    qCDebug(lcDocCache, "Inserting document %s into cache", qPrintable(id));
    store(id, QJsonDocument(object).toJson(QJsonDocument::Compact));
}

void DocumentCache::store(const QString &id, const QByteArray &json)
{
    const QByteArray key = id.toLatin1();
    m_entries.insert(
        id, { minutesNow(), quint32(m_data.size()), quint32(key.size()), quint32(json.size()) });
    m_data.append(key);
    m_data.append(json);
}

QJsonObject DocumentCache::find(const QString &id)
{
    const auto entry = m_entries.find(id);
    if (entry == m_entries.end()) {
        qCDebug(lcDocCache, "Cache miss for document %s", qPrintable(id));
        return {};
    }
    qCDebug(lcDocCache, "Found document %s in cache", qPrintable(id));
    return read(entry);
}

QList<QJsonObject> DocumentCache::find(const QStringList &ids)
{
    QList<QJsonObject> objects;
    for (const QString &id : ids) {
        const auto entry = m_entries.find(id);
        if (entry != m_entries.end()) {
            objects.append(read(entry));
        }
    }
    return objects;
}

QJsonObject DocumentCache::read(Entries::iterator entry)
{
    const QByteArray json = QByteArray::fromRawData(
        m_data.constData() + entry->offset + entry->idSize, int(entry->dataSize));
    QJsonParseError error;
    QJsonObject object = QJsonDocument::fromJson(json, &error).object();
    if (error.error != QJsonParseError::NoError) {
        qCCritical(lcDocCache, "Failed to parse JSON: %s", qPrintable(error.errorString()));
        m_entries.erase(entry);
        return {};
    }
    entry->accessTime = minutesNow();
    object.insert(jsonkeys::wasCached, true);
    return object;
}

void DocumentCache::invalidate(const QString &id)
{
    qCDebug(lcDocCache, "Invalidating cache entry for %s", qPrintable(id));
    m_entries.remove(id);
}

void DocumentCache::invalidate(const QString &id, const QString &revision)
{
    const auto entry = m_entries.find(id);
    if (entry == m_entries.end()) {
        return;
    }
    const QJsonObject object = read(entry);
    if (!object.isEmpty() && object.value(jsonkeys::revision).toString() != revision) {
        invalidate(id);
    }
}

} // namespace vo::data
