// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/transfer/savequeue.h>

#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/context/context.h>
#include <vorrel/data/core/document.h>
#include <vorrel/data/transfer/savequeue_p.h>
#include <vorrel/data/transfer/savetask_p.h>

#include <vorrel/util/dependencygraph.h>

#include <QtCore/QPointer>

#include <algorithm>

namespace vo::data {

namespace {

/// The documents that need \p document to be in the database. A reference may stand in a document
/// that is itself part of another.
QSet<Document *> referrers(const Document *document)
{
    QSet<Document *> result;
    const QList<Document *> referencing = document->referencingDocuments();
    for (const Document *referrer : referencing) {
        result.insert(const_cast<Document *>(referrer->linkSource()));
    }
    return result;
}

/// Needed documents come first.
QList<Document *> transferOrder(const QSet<Document *> &documents)
{
    util::DependencyGraph<Document *> graph;
    for (Document *document : documents) {
        graph.addNode(document);
        const QSet<Document *> needing = referrers(document);
        for (Document *referrer : needing) {
            if (documents.contains(referrer)) {
                graph.addDependency(referrer, document);
            }
        }
    }
    return graph.order();
}

/// Moves what failed before, and what needs that, to the end.
void putFailedLast(QList<Document *> &order, const QList<SaveFailure> &failures)
{
    QSet<Document *> late;
    for (const SaveFailure &failure : failures) {
        late.insert(failure.document());
    }
    if (late.isEmpty()) {
        return;
    }
    for (Document *document : std::as_const(order)) {
        if (late.contains(document)) {
            late.unite(referrers(document));
        }
    }
    std::stable_partition(order.begin(), order.end(),
                          [&](Document *document) { return !late.contains(document); });
}

} // namespace

SaveQueue::SaveQueue(const QSet<Document *> &documents, Context *context)
    : QObject(context)
    , d(new Private)
{
    QList<Document *> order = transferOrder(documents);
    putFailedLast(order, context->saveFailures());
    for (Document *document : std::as_const(order)) {
        qCDebug(lcSaveQueue, "Adding %s %s to save queue", qPrintable(document->type()),
                document->id().constData());
        auto *task = new SaveTask(document, this);
        connect(task, &SaveTask::progressChanged, this, &SaveQueue::progressChanged);
        d->tasks.append(task);
        d->pending.push_back(task);
    }
}

SaveQueue::~SaveQueue() = default;

void SaveQueue::startTransfer()
{
    qCInfo(lcSaveQueue, "Starting transfer of %d documents", int(d->pending.size()));
    for (SaveTask *task : std::as_const(d->tasks)) {
        task->prepare();
    }
    nextTask();
}

void SaveQueue::abortTransfer() { }

double SaveQueue::progress() const
{
    qint64 sent = 0;
    qint64 total = 0;
    for (const SaveTask *task : std::as_const(d->tasks)) {
        total += task->bytesTotal();
        sent += qint64(double(task->bytesTotal()) * task->progress());
    }
    return total > 0 ? std::clamp(double(sent) / double(total), 0.0, 1.0) : 0.0;
}

bool SaveQueue::success() const
{
    return d->success;
}

void SaveQueue::nextTask()
{
    if (d->current) {
        if (d->current->status() != SaveTask::Finished) {
            Q_EMIT finished();
            return;
        }
        d->current = nullptr;
    }
    if (d->pending.empty()) {
        d->success = true;
        Q_EMIT finished();
        return;
    }
    d->current = d->pending.front();
    d->pending.pop_front();
    connect(d->current, &SaveTask::finished, this, &SaveQueue::nextTask);
    d->current->start();
}

} // namespace vo::data

#include "moc_savequeue.cpp"
