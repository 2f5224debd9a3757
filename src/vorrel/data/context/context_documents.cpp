// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// Context: the table of documents, their graph, and the tasks on it.

#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/base/timeslice_p.h>
#include <vorrel/data/base/tuning_p.h>
#include <vorrel/data/context/changefeedmonitor.h>
#include <vorrel/data/context/context_p.h>
#include <vorrel/data/context/documentincubator.h>
#include <vorrel/data/context/loadqueue.h>
#include <vorrel/data/core/documentids_p.h>
#include <vorrel/data/core/documenttasks_p.h>
#include <vorrel/data/core/inlinedocument.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QMap>
#include <QtQml/QQmlEngine>

namespace vo::data {

namespace {

/// Wakes a Context for its graph tasks.
class DocumentGraphUpdateEvent : public QEvent
{
public:
    DocumentGraphUpdateEvent()
        : QEvent(number())
    { }

    static Type number()
    {
        static const auto registered = Type(registerEventType());
        return registered;
    }
};

LinkedDocument *keptFromJavaScript(LinkedDocument *document)
{
    if (document) {
        QQmlEngine::setObjectOwnership(document, QQmlEngine::CppOwnership);
    }
    return document;
}

void reportTypes(const QList<Document *> &documents)
{
    QMap<QString, int> counts;
    for (const Document *document : documents) {
        ++counts[document->type()];
    }
    for (auto it = counts.cbegin(); it != counts.cend(); ++it) {
        qCInfo(lcContext) << it.key() << it.value();
    }
}

} // namespace

// Making documents

Document *Context::createDocument(const QString &type)
{
    return createDocumentWithId(type, QString());
}

Document *Context::createDocumentWithId(const QString &type, const QString &id)
{
    return !d->closing && canCreateNewDocument(type)
        ? keptFromJavaScript(LinkedDocument::create(type, id, this))
        : nullptr;
}

void Context::addCreationHandler(const QString &type, std::function<void(Document *)> handler)
{
    d->creationHandlers[type].append(std::move(handler));
}

void Context::Private::runCreationHandlers(Document *document)
{
    const QPointer<Document> guard(document);
    const QString type = document->type();
    int end = 0;
    do {
        end = int(type.indexOf(QLatin1Char(':'), end + 1));
        // A copy: a handler may add handlers.
        const auto handlers = creationHandlers.value(end < 0 ? type : type.left(end));
        for (const auto &handler : handlers) {
            handler(document);
            if (!guard) {
                return;
            }
        }
    } while (end >= 0);
}

// The table

bool Context::isLoaded(const QString &id) const
{
    return isStorableId(id) && d->documentNodes.contains(id.toLatin1());
}

Document *Context::loadedDocument(const QString &id) const
{
    const DocumentNode *node = isStorableId(id) ? d->documentNode(id.toLatin1()) : nullptr;
    LinkedDocument *document = node ? node->document() : nullptr;
    return document && !document->deleted() ? keptFromJavaScript(document) : nullptr;
}

DocumentNode *Context::documentNode(const QByteArray &id) const
{
    return d->documentNode(id);
}

DocumentNode *Context::documentNode(const Document *document) const
{
    return document ? d->documentNode(document->id()) : nullptr;
}

QList<Document *> Context::documents() const
{
    QList<Document *> documents;
    for (const DocumentNode *node : std::as_const(d->documentNodes)) {
        if (node->isInstantiated()) {
            documents.append(node->document());
        }
    }
    return documents;
}

QList<LinkedDocument *> Context::dirtyDocuments() const
{
    return d->dirtyDocuments.values();
}

QList<Document *> Context::localDocuments() const
{
    return d->locals;
}

bool Context::hasLocalChanges() const
{
    return !d->dirtyDocuments.isEmpty();
}

void Context::updateAccessLevel()
{
    const QList<Document *> all = documents();
    for (Document *document : all) {
        static_cast<LinkedDocument *>(document)->scheduleAccessLevelUpdate();
    }
}

void Context::documentReport() const
{
    const QList<Document *> all = documents();
    qCInfo(lcContext) << "Document report for" << all.size() << "documents";
    reportTypes(all);
    QList<Document *> orphans;
    const auto inlineDocuments = findChildren<InlineDocument *>();
    for (InlineDocument *document : inlineDocuments) {
        if (!document->ownerDocument()) {
            orphans.append(document);
        }
    }
    qCInfo(lcContext) << "Orphaned inline documents:" << orphans.size();
    reportTypes(orphans);
    qCInfo(lcContext, "Cached %d in %lld bytes, revisions %d", d->cache ? d->cache->count() : 0,
           d->cache ? d->cache->blockSize() : 0LL, d->monitor ? d->monitor->revisionCount() : 0);
    qCInfo(lcContext, "Known %d, linked %d, unsaved %d, wanted %d, incubating %d, tasks %d",
           int(d->documentNodes.size()), int(d->documentLinks.size()),
           int(d->dirtyDocuments.size()), int(d->loadQueue->wantedDocuments().size()),
           d->incubator->waitingCount(), int(d->graphTasks.size()));
}

// Removing documents

Context::Private::RemoteEdit::RemoteEdit(Context *context)
    : m_context(context)
{
    ++context->d->remoteEdits;
}

Context::Private::RemoteEdit::~RemoteEdit()
{
    if (m_context) {
        --m_context->d->remoteEdits;
    }
}

void Context::removeDocument(const QString &id)
{
    if (auto *document = qobject_cast<LinkedDocument *>(loadedDocument(id))) {
        removeDocument(document);
    }
}

void Context::removeDocument(LinkedDocument *document)
{
    const Private::RemoteEdit edit(this);
    const QPointer<Context> self(this);
    const QPointer<LinkedDocument> guard(document);
    const QString id = document->documentId();
    if (document->isDirty()) {
        qCWarning(lcContext,
                  "Document %s was removed from the database: its unsaved edits are lost",
                  qPrintable(id));
    }
    document->setDeleted(true);
    if (self && guard) {
        document->markClean(document->revision(), document->changeSequenceNumber(),
                            document->currentAttachments());
    }
    if (!self) {
        return;
    }
    if (d->cache) {
        d->cache->invalidate(id);
    }
    addDocumentGraphTask(std::make_unique<RunFunctionTask>([this, guard] {
        if (guard) {
            d->removeDocument(guard);
        }
    }));
}

// Runs in a turn of its own.
void Context::Private::removeDocument(LinkedDocument *document)
{
    const RemoteEdit edit(q);
    const QPointer<Context> self(q);
    const QPointer<LinkedDocument> guard(document);
    // Where access or a veto kept the document from being deleted, it is still referred to.
    document->releaseReferrers();
    if (self && guard) {
        document->updateDependencies();
    }
    DocumentNode *node = self && guard ? documentNode(document->id()) : nullptr;
    // A new document may have taken over the id in the meantime.
    if (node && node->document() == document) {
        destroyNode(takeNode(node));
    }
}

// Work for later

void Context::incubate(IIncubatable *object)
{
    d->incubate(object);
}

void Context::finishIncubation()
{
    d->finishIncubation();
}

void Context::addDocumentGraphTask(std::unique_ptr<DocumentTask> task)
{
    d->addDocumentGraphTask(std::move(task));
}

void Context::Private::addDocumentGraphTask(std::unique_ptr<DocumentTask> task)
{
    graphTasks.push_back(std::move(task));
    if (!graphTasksPending) {
        graphTasksPending = true;
        QCoreApplication::postEvent(q, new DocumentGraphUpdateEvent);
    }
}

void Context::customEvent(QEvent *event)
{
    event->accept();
    if (event->type() != DocumentGraphUpdateEvent::number()) {
        return;
    }
    const QPointer<Context> self(this);
    const TimeSlice slice(tuning::graphTaskSlice);
    while (!d->graphTasks.empty() && !slice.isOver()) {
        const std::unique_ptr<DocumentTask> task = std::move(d->graphTasks.front());
        d->graphTasks.pop_front();
        task->run();
        if (!self) {
            return;
        }
    }
    if (d->graphTasks.empty()) {
        d->graphTasksPending = false;
    } else {
        QCoreApplication::postEvent(this, new DocumentGraphUpdateEvent);
    }
}

} // namespace vo::data
