// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// Context: what others do to its database.

#include <vorrel/data/context/changefeedmonitor.h>
#include <vorrel/data/context/context_p.h>
#include <vorrel/data/context/defaultupdatehandler.h>
#include <vorrel/data/context/reloadingupdatehandler.h>
#include <vorrel/data/core/documentids_p.h>

namespace vo::data {

void Context::Private::followDatabase()
{
    if (ChangeFeedMonitor *former = std::exchange(monitor, nullptr)) {
        former->disconnect(q);
        former->deleteLater();
    }
    cache.reset();
    monitor = ChangeFeedMonitor::create(changeFeedMonitorType, databaseName, q);
    cache = DocumentCache::getCache(databaseName);
    if (monitor) {
        connect(monitor, &ChangeFeedMonitor::newDocument, q, &Context::handleNewDocument);
        connect(monitor, &ChangeFeedMonitor::newRevision, q, &Context::handleNewRevision,
                Qt::QueuedConnection);
        connect(monitor, &ChangeFeedMonitor::error, q, &Context::handleChangeFeedError);
    }
    q->updateListings();
}

// What changed

void Context::handleNewRevision(const QString &id, const QString &revision)
{
    const DocumentNode *node = isStorableId(id) ? d->documentNode(id.toLatin1()) : nullptr;
    if (!node || !node->isInstantiated()) {
        return;
    }
    LinkedDocument *document = node->document();
    if (document->storageFlags().testFlag(Document::IgnoreChangeFeed)
        || document->revision() == revision) {
        return;
    }
    // The handler may replace itself, or destroy this object, and has to outlive that.
    if (const std::shared_ptr<IUpdateHandler> handler = d->updateHandler) {
        handler->update(document);
    }
}

void Context::handleChangeFeedError()
{
    if (d->monitor) {
        d->monitor->reportError(this);
    }
}

// What to do about it

void Context::setUpdateHandler(IUpdateHandler *handler)
{
    const bool followed = followsRemoteEdits();
    d->updateHandler.reset(handler);
    if (followsRemoteEdits() != followed) {
        Q_EMIT followsRemoteEditsChanged();
    }
}

bool Context::followsRemoteEdits() const
{
    return dynamic_cast<const ReloadingUpdateHandler *>(d->updateHandler.get());
}

void Context::setFollowsRemoteEdits(bool follow)
{
    if (follow == followsRemoteEdits()) {
        return;
    }
    if (follow) {
        setUpdateHandler(new ReloadingUpdateHandler);
    } else {
        setUpdateHandler(new DefaultUpdateHandler);
    }
}

bool Context::isTakingRemoteEdit() const
{
    return d->remoteEdits > 0;
}

} // namespace vo::data
