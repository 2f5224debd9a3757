// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// Context: loading documents, and whether it is busy with that.

#include <vorrel/data/context/context_p.h>
#include <vorrel/data/context/documentincubator.h>
#include <vorrel/data/context/loadqueue.h>
#include <vorrel/data/context/loadrequest.h>

namespace vo::data {

LoadRequest *Context::loadDocument(const QString &id)
{
    return loadDocuments({ id });
}

LoadRequest *Context::loadDocuments(const QStringList &ids)
{
    if (d->closing) {
        return nullptr;
    }
    const QPointer<LoadRequest> request(new LoadRequest(ids, this));
    const QSet<QString> pending = request->pendingDocuments();
    if (!pending.isEmpty()) {
        d->loadRequests->add(request, pending);
        d->loadQueue->load(pending);
    }
    return request;
}

LoadQueue *Context::loadQueue() const
{
    return d->loadQueue;
}

void Context::setLoadQueue(LoadQueue *queue)
{
    if (queue == d->loadQueue) {
        return;
    }
    LoadQueue *former = std::exchange(d->loadQueue, queue);
    connect(queue, &LoadQueue::loadingChanged, this, &Context::updateBusyState,
            Qt::QueuedConnection);
    connect(queue, &LoadQueue::documentNotFound, d->loadRequests, &LoadRequestBoard::notFound);
    if (!former) {
        return;
    }
    former->disconnect(this);
    former->disconnect(d->loadRequests);
    former->deleteLater();
    const QSet<QString> wanted = former->wantedDocuments();
    if (!wanted.isEmpty()) {
        queue->load(wanted);
    }
    updateBusyState();
}

QSharedPointer<DocumentCache> Context::documentCache() const
{
    return d->cache;
}

void Context::persistCache()
{
    if (d->cache) {
        d->cache->store();
    }
}

bool Context::isBusy() const
{
    return d->busy;
}

void Context::updateBusyState()
{
    if (d->closing) {
        return;
    }
    // Without downloads nobody waits for an incubation, so it does not count.
    const bool busy = d->loadQueue->isLoading() || !d->jobs.isEmpty()
        || (attachmentDownloadEnabled() && d->incubator->isIncubating());
    if (busy != d->busy) {
        d->busy = busy;
        Q_EMIT busyChanged();
    }
}

} // namespace vo::data
