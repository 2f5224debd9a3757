// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/context/cacheloader.h>

#include <vorrel/data/base/jsonkeys_p.h>
#include <vorrel/data/base/timeslice_p.h>
#include <vorrel/data/base/tuning_p.h>
#include <vorrel/data/context/context.h>
#include <vorrel/data/context/documentcache.h>

#include <QtCore/QPointer>

#include <deque>

namespace vo::data {

namespace {

constexpr int cachePriority = 10;

struct Wanted
{
    QString id;
    QSharedPointer<DocumentCache> cache; // the one that had the id
};

} // namespace

struct CacheLoader::Private
{
    std::deque<Wanted> wanted;
};

CacheLoader::CacheLoader(Context *context)
    : Loader(cachePriority, context)
    , d(new Private)
{ }

CacheLoader::~CacheLoader() = default;

bool CacheLoader::load(const QString &id)
{
    if (context()->contentFetchPolicy().testFlag(Context::BypassDocumentCachePolicy)) {
        return false;
    }
    const QSharedPointer<DocumentCache> cache = context()->documentCache();
    if (!cache || !cache->contains(id)) {
        return false;
    }
    if (d->wanted.empty()) {
        QMetaObject::invokeMethod(this, &CacheLoader::runSlice, Qt::QueuedConnection);
    }
    d->wanted.push_back({ id, cache });
    return true;
}

// Thousands of documents come from the cache at once, and each has to be parsed.
void CacheLoader::runSlice()
{
    const QPointer<CacheLoader> self(this);
    const TimeSlice slice(tuning::batchSlice);
    while (!d->wanted.empty() && !slice.isOver()) {
        const Wanted next = d->wanted.front();
        if (next.cache != context()->documentCache()) {
            Q_EMIT failed(next.id); // another database is open by now
        } else if (const QJsonObject data = next.cache->find(next.id);
                   data.value(jsonkeys::id).toString() == next.id) {
            Q_EMIT loaded(next.id, data);
        } else {
            next.cache->invalidate(next.id);
            Q_EMIT failed(next.id);
        }
        if (!self) {
            return;
        }
        // Only now, so that load() does not start a second round in a slot.
        d->wanted.pop_front();
    }
    if (!d->wanted.empty()) {
        QMetaObject::invokeMethod(this, &CacheLoader::runSlice, Qt::QueuedConnection);
    }
}

} // namespace vo::data

#include "moc_cacheloader.cpp"
