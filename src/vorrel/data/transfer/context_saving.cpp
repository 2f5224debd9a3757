// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// Context: how its documents are saved. This aspect stands beside the upload that it starts, in the
// folder that may know both.

#include <vorrel/data/context/context_p.h>
#include <vorrel/data/context/reloadingupdatehandler.h>
#include <vorrel/data/transfer/savequeue_p.h>
#include <vorrel/data/transfer/savetask_p.h>

namespace vo::data {

bool Context::canSave() const
{
    return hasLocalChanges() && !isSaving() && d->saveEnabled;
}

bool Context::isSaveEnabled() const
{
    return d->saveEnabled;
}

void Context::setSaveEnabled(bool enabled)
{
    const bool could = canSave();
    d->saveEnabled = enabled;
    if (canSave() != could) {
        Q_EMIT canSaveChanged();
    }
}

bool Context::isSaving() const
{
    return d->saveQueue != nullptr;
}

SaveQueue *Context::saveQueue() const
{
    return d->saveQueue;
}

void Context::saveLocalChanges()
{
    if (!canSave()) {
        return;
    }
    const QSet<Document *> documents(d->dirtyDocuments.begin(), d->dirtyDocuments.end());
    auto *queue = new SaveQueue(documents, this);
    d->saveQueue = queue;
    connect(queue, &SaveQueue::finished, this, &Context::saveFinished);
    connect(queue, &QObject::destroyed, this, &Context::saveLost);
    const QPointer<SaveQueue> guard(queue);
    d->setSaveFailures({});
    if (guard) {
        Q_EMIT saveQueueChanged();
    }
    if (guard) {
        queue->startTransfer();
    }
}

void Context::saveFinished()
{
    SaveQueue *queue = d->saveQueue;
    queue->disconnect(this);
    queue->deleteLater();
    if (queue->success()) {
        d->endSave(true, {});
    } else {
        d->endSave(false, { queue->d->current->failure() });
    }
}

// Somebody destroyed the upload.
void Context::saveLost()
{
    d->endSave(false, {});
}

void Context::Private::endSave(bool success, const QList<SaveFailure> &failures)
{
    saveQueue = nullptr;
    Context *const context = q;
    const QPointer<Context> guard(context);
    setSaveFailures(failures);
    if (guard) {
        Q_EMIT context->saveQueueChanged();
    }
    if (guard) {
        Q_EMIT context->saved(success);
    }
}

QList<SaveFailure> Context::saveFailures() const
{
    return d->saveFailures;
}

QVariantList Context::saveFailureList() const
{
    QVariantList list;
    for (const SaveFailure &failure : std::as_const(d->saveFailures)) {
        list.append(QVariant::fromValue(failure));
    }
    return list;
}

void Context::Private::setSaveFailures(const QList<SaveFailure> &failures)
{
    if (!failures.isEmpty() || !saveFailures.isEmpty()) {
        saveFailures = failures;
        Q_EMIT q->saveFailuresChanged();
    }
}

// Conflicts

void Context::setConflictHandler(ConflictHandler handler)
{
    d->conflictHandler = std::move(handler);
}

Context::ConflictResolution Context::resolveConflict(Document *document,
                                                     const QString &remoteRevision)
{
    // A copy: the handler may set another one.
    const ConflictHandler handler = d->conflictHandler;
    return handler ? handler(document, remoteRevision) : KeepLocal;
}

void Context::dropEdits(Document *document)
{
    d->cache->invalidate(document->documentId());
    const QPointer<Context> self(this);
    const QPointer<Document> guard(document);
    document->markClean(document->revision(), document->changeSequenceNumber(),
                        document->currentAttachments());
    if (!self || !guard) {
        return;
    }
    if (!d->conflictReloads) {
        d->conflictReloads = std::make_unique<ReloadingUpdateHandler>();
    }
    d->conflictReloads->update(static_cast<LinkedDocument *>(document));
}

} // namespace vo::data
