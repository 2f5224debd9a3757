// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/context/loadqueue.h>

#include <vorrel/data/base/jsonkeys_p.h>
#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/base/timeslice_p.h>
#include <vorrel/data/base/tuning_p.h>
#include <vorrel/data/context/context.h>
#include <vorrel/data/context/documentbatch_p.h>
#include <vorrel/data/context/loader.h>
#include <vorrel/data/core/documentids_p.h>

#include <QtCore/QDebug>
#include <QtCore/QHash>
#include <QtCore/QJsonArray>
#include <QtCore/QPointer>

#include <algorithm>
#include <vector>

namespace vo::data {

struct LoadQueue::Private
{
    bool loading = false;
    QHash<QString, const Loader *> requested; // not delivered yet; who has taken it, or null
    QHash<QString, QJsonObject> received;     // delivered, waiting for references
    std::unique_ptr<DocumentBatch> batch;     // complete, on its way into the Context
    std::vector<QString> toOffer;             // to the loaders, since the last tick
    std::vector<Loader *> loaders;            // by priority; owned

    void request(const QSet<QString> &ids);

    /// Notes who has taken a requested document. False if it is not requested any more.
    bool setTaker(const QString &id, const Loader *loader);
};

void LoadQueue::Private::request(const QSet<QString> &ids)
{
    for (const QString &id : ids) {
        static_cast<void>(requested[id]);
    }
}

bool LoadQueue::Private::setTaker(const QString &id, const Loader *loader)
{
    const auto entry = requested.find(id);
    if (entry == requested.end()) {
        return false;
    }
    *entry = loader;
    return true;
}

LoadQueue::LoadQueue(Context *context)
    : QObject(context)
    , d(new Private)
{
    startTimer(int(tuning::loadQueueTick.count()), Qt::CoarseTimer);
}

LoadQueue::~LoadQueue()
{
    for (Loader *loader : d->loaders) {
        loader->disconnect(this);
        delete loader;
    }
}

Context *LoadQueue::context() const
{
    return static_cast<Context *>(parent());
}

bool LoadQueue::isLoading() const
{
    return d->loading;
}

void LoadQueue::setLoading(bool loading)
{
    if (loading != d->loading) {
        d->loading = loading;
        Q_EMIT loadingChanged();
    }
}

void LoadQueue::load(const QSet<QString> &ids)
{
    qCDebug(lcLoadQueue) << "Requesting load of" << ids;
    d->requested.reserve(d->requested.size() + ids.size());
    d->request(ids);
    d->requested.remove(QString()); // no document has it, so nobody could answer
    setLoading(true);
}

QSet<QString> LoadQueue::wantedDocuments() const
{
    QSet<QString> wanted(d->requested.keyBegin(), d->requested.keyEnd());
    for (auto it = d->received.keyBegin(); it != d->received.keyEnd(); ++it) {
        wanted.insert(*it);
    }
    return d->batch ? wanted | d->batch->remaining() : wanted;
}

// Loaders

void LoadQueue::addLoader(Loader *loader)
{
    const auto position = std::upper_bound(
        d->loaders.begin(), d->loaders.end(), loader->priority(),
        [](int priority, const Loader *other) { return priority < other->priority(); });
    d->loaders.insert(position, loader);
    // A loader may answer while it is offered the next id; its documents come in a turn of
    // their own.
    connect(loader, &Loader::loaded, this, &LoadQueue::handleLoaded, Qt::QueuedConnection);
    connect(loader, &Loader::notFound, this, &LoadQueue::handleNotFound);
    connect(loader, &Loader::failed, this, &LoadQueue::handleFailed);
    connect(loader, &QObject::destroyed, this, [this, loader] { removeLoader(loader); });
}

void LoadQueue::removeLoader(Loader *loader)
{
    const auto found = std::find(d->loaders.begin(), d->loaders.end(), loader);
    if (found == d->loaders.end()) {
        return;
    }
    loader->disconnect(this);
    d->loaders.erase(found);
    // It will not answer any more, so what it had taken is offered anew.
    for (const Loader *&taker : d->requested) {
        taker = taker == loader ? nullptr : taker;
    }
}

void LoadQueue::handleLoaded(const QString &id, const QJsonObject &data)
{
    if (id.isEmpty() || !isStorableId(id)) {
        qCWarning(lcLoadQueue, "Ignoring a document with the id \"%s\"", qPrintable(id));
        return;
    }
    bool waits = false;
    QSet<QString> missing;
    const QJsonArray references = data.value(jsonkeys::references).toArray();
    for (const QJsonValue &value : references) {
        const QString reference = value.toString();
        if (reference.isEmpty() || context()->isLoaded(reference)) {
            continue;
        }
        waits = true;
        const bool known = d->requested.contains(reference) || d->received.contains(reference)
            || (d->batch && d->batch->contains(reference));
        if (!known) {
            missing.insert(reference);
        }
    }
    missing.remove(id); // a document that refers to itself
    d->requested.remove(id);
    d->request(missing);
    if (waits) {
        d->received.insert(id, data);
    } else {
        context()->addDocumentNode(id.toLatin1(), data);
    }
}

void LoadQueue::handleNotFound(const QString &id)
{
    d->requested.remove(id);
    Q_EMIT documentNotFound(id);
}

void LoadQueue::handleFailed(const QString &id)
{
    // It stays wanted; the loader sets the pace.
    d->setTaker(id, nullptr);
}

// The tick

void LoadQueue::timerEvent(QTimerEvent * /*event*/)
{
    for (auto it = d->received.keyBegin(); it != d->received.keyEnd(); ++it) {
        d->requested.remove(*it);
    }
    if (!d->requested.isEmpty()) {
        offerRequested();
        return;
    }
    if (d->batch) {
        return;
    }
    if (d->received.isEmpty()) {
        setLoading(false);
        return;
    }
    d->batch = std::make_unique<DocumentBatch>(std::exchange(d->received, {}));
    instanceDocuments();
}

void LoadQueue::offerRequested()
{
    if (!d->toOffer.empty()) {
        return; // those of the last tick are not through
    }
    for (auto it = d->requested.cbegin(); it != d->requested.cend(); ++it) {
        if (!it.value()) {
            d->toOffer.push_back(it.key());
        }
    }
    offerSlice();
}

// Thousands may be wanted at once.
void LoadQueue::offerSlice()
{
    const QPointer<LoadQueue> self(this);
    const TimeSlice slice(tuning::batchSlice);
    while (!d->toOffer.empty() && !slice.isOver()) {
        const QString id = std::move(d->toOffer.back());
        d->toOffer.pop_back();
        offer(id);
        if (!self) {
            return;
        }
    }
    if (!d->toOffer.empty()) {
        QMetaObject::invokeMethod(this, &LoadQueue::offerSlice, Qt::QueuedConnection);
    }
}

void LoadQueue::offer(const QString &id)
{
    const auto entry = d->requested.constFind(id);
    if (entry == d->requested.constEnd() || entry.value()) {
        return; // it came meanwhile, in a slot
    }
    if (!isStorableId(id)) {
        qCWarning(lcLoadQueue, "Not loading the id \"%s\": ids are Latin-1", qPrintable(id));
        handleNotFound(id);
        return;
    }
    const QPointer<LoadQueue> self(this);
    const std::vector<Loader *> loaders = d->loaders;
    for (Loader *loader : loaders) {
        // Noted before, so that it is right even if the answer comes at once.
        if (!d->setTaker(id, loader) || loader->load(id) || !self) {
            return;
        }
    }
    d->setTaker(id, nullptr);
}

// Gives the batch to the Context, in slices.
void LoadQueue::instanceDocuments()
{
    const QPointer<LoadQueue> self(this);
    const TimeSlice slice(tuning::batchSlice);
    bool more = true;
    while (more && !slice.isOver()) {
        more = d->batch->addNext(context());
        if (!self) {
            return;
        }
    }
    if (more) {
        QMetaObject::invokeMethod(this, &LoadQueue::instanceDocuments, Qt::QueuedConnection);
        return;
    }
    d->batch->report();
    d->batch.reset();
    if (d->requested.isEmpty() && d->received.isEmpty()) {
        setLoading(false);
    }
}

} // namespace vo::data

#include "moc_loadqueue.cpp"
