// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// Context: what it does for its documents, behind the interface that they know.

#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/base/tuning_p.h>
#include <vorrel/data/context/changefeedmonitor.h>
#include <vorrel/data/context/context_p.h>
#include <vorrel/data/context/documentincubator.h>
#include <vorrel/data/core/accesscontroller.h>
#include <vorrel/data/core/documenttasks_p.h>

#include <QtCore/QTimer>

#include <algorithm>

namespace vo::data {

DocumentStore &documentStore(const Context *context)
{
    return *context->d;
}

QObject *Context::Private::object()
{
    return q;
}

QObject *Context::Private::documentParent()
{
    return documents;
}

bool Context::Private::isClosing() const
{
    return closing;
}

QString Context::Private::language() const
{
    return q->language();
}

QUrl Context::Private::serviceUrl() const
{
    return url;
}

QString Context::Private::database() const
{
    return databaseName;
}

QNetworkAccessManager *Context::Private::networkManager() const
{
    return networkAccessManager;
}

DocumentNode *Context::Private::documentNode(const QByteArray &id) const
{
    return documentNodes.value(id);
}

std::unique_ptr<AccessController> Context::Private::createAccessController(LinkedDocument *document)
{
    return std::unique_ptr<AccessController>(q->createAccessController(document));
}

void Context::Private::incubate(IIncubatable *object)
{
    incubator->incubate(object);
}

void Context::Private::finishIncubation()
{
    incubator->finishIncubation();
}

bool Context::Private::attachmentDownloadEnabled() const
{
    return q->attachmentDownloadEnabled();
}

QSharedPointer<DownloadProgress> Context::Private::beginDownload()
{
    return q->beginDownload();
}

void Context::Private::endDownload(const QSharedPointer<DownloadProgress> &progress)
{
    q->endDownload(progress);
}

// Nodes

DocumentNode *Context::addDocumentNode(const QByteArray &id, const QJsonObject &data)
{
    DocumentNode *node = d->documentNodes.value(id);
    return node ? node : d->insertNode(new DocumentNode(this, id, data));
}

DocumentNode *Context::Private::insertNode(DocumentNode *node)
{
    const QString id = QString::fromLatin1(node->id());
    documentNodes.insert(node->id(), node);
    loadRequests->nodeAdded(id);
    Q_EMIT q->documentNodeAdded(id);
    return node;
}

void Context::addDocument(LinkedDocument *document)
{
    d->addDocument(document);
}

void Context::Private::addDocument(LinkedDocument *document)
{
    const QPointer<LinkedDocument> guard(document);
    DocumentNode *node = documentNode(document->id());
    if (!node) {
        insertNode(new DocumentNode(document));
    } else if (!node->m_document) {
        // Before anybody hears of the document, so that the node does not make a second one.
        node->m_document = document;
        node->m_data = QJsonObject();
    } else if (node->m_document != document) {
        qCCritical(lcContext, "A second object for document %s. This is a bug!",
                   document->id().constData());
        return;
    }
    if (guard && monitor) {
        monitor->registerDocument(document);
    }
    if (guard) {
        runCreationHandlers(document);
    }
    if (guard) {
        Q_EMIT q->documentAdded(document);
    }
    if (guard && document->isLocal()) {
        locals.append(document);
        Q_EMIT q->localDocumentsChanged();
    }
}

bool Context::Private::releaseId(const QByteArray &id)
{
    DocumentNode *node = documentNode(id);
    if (!node) {
        return true;
    }
    if (!node->isInstantiated() || !node->document()->deleted()) {
        return false;
    }
    auto taken = takeNode(node);
    addDocumentGraphTask(std::make_unique<RunFunctionTask>([this, taken] { destroyNode(taken); }));
    return true;
}

void Context::Private::forgetDocument(LinkedDocument *document)
{
    DocumentNode *node = documentNode(document->id());
    if (node && node->m_document == document) {
        // Somebody else destroyed the document. The node goes with it, so that the id can be
        // loaded again, but not at once: it may be making the document just now.
        node->m_document = nullptr;
        addDocumentGraphTask(std::make_unique<RunFunctionTask>([taken = takeNode(node)] {}));
    }
    const bool wasLocal = locals.removeOne(document);
    const bool wasLastDirty = dirtyDocuments.remove(document) && dirtyDocuments.isEmpty();
    if (wasLocal || wasLastDirty) {
        // Told later: guarded pointers still lead to the document here, half destroyed as it is,
        // and a slot might even destroy it again.
        addDocumentGraphTask(std::make_unique<RunFunctionTask>([this, wasLocal, wasLastDirty] {
            const QPointer<Context> self(q);
            if (wasLocal) {
                Q_EMIT q->localDocumentsChanged();
            }
            if (self && wasLastDirty) {
                Q_EMIT q->hasLocalChangesChanged();
            }
        }));
    }
}

std::shared_ptr<DocumentNode> Context::Private::takeNode(DocumentNode *node)
{
    documentNodes.remove(node->id());
    for (const DocumentEdge *edge : node->outgoing()) {
        if (LinkedDocument *target = edge->target->document()) {
            target->scheduleAccessLevelUpdate(); // it may have been readable through this edge
        }
    }
    while (!node->outgoing().isEmpty()) {
        destroyEdge(node->outgoing().constFirst());
    }
    while (!node->incoming().isEmpty()) {
        destroyEdge(node->incoming().constFirst());
    }
    return std::shared_ptr<DocumentNode>(node);
}

void Context::Private::destroyEdge(DocumentEdge *edge)
{
    documentLinks.remove({ edge->source, edge->target });
    edge->source->removeOutgoingEdge(edge);
    edge->target->removeIncomingEdge(edge);
    delete edge;
}

void Context::Private::destroyNode(const std::shared_ptr<DocumentNode> &node)
{
    const QPointer<LinkedDocument> document(node->m_document);
    if (document) {
        Q_EMIT q->documentRemoved(document);
    }
    if (!document) {
        node->m_document = nullptr; // a slot was faster
    }
}

// Edges

void Context::linkDocuments(DocumentNode *from, DocumentNode *to)
{
    d->linkDocuments(from, to);
}

void Context::unlinkDocuments(DocumentNode *from, DocumentNode *to)
{
    d->unlinkDocuments(from, to);
}

void Context::Private::linkDocuments(DocumentNode *from, DocumentNode *to)
{
    if (!from->isInstantiated() || !to->isInstantiated()) {
        return;
    }
    if (DocumentEdge *former = documentLinks.value({ from, to })) {
        destroyEdge(former); // one edge stands for all references from the one to the other
    }
    auto *edge = new DocumentEdge { from, to };
    from->addOutgoingEdge(edge);
    to->addIncomingEdge(edge);
    documentLinks.insert({ from, to }, edge);
    to->document()->scheduleAccessLevelUpdate();
    // Copies of the ids, since a slot may destroy the nodes.
    Q_EMIT q->documentLinked(QByteArray(from->id()), QByteArray(to->id()));
}

void Context::Private::unlinkDocuments(DocumentNode *from, DocumentNode *to)
{
    if (!from->isInstantiated() || !to->isInstantiated()) {
        return;
    }
    if (DocumentEdge *edge = documentLinks.value({ from, to })) {
        destroyEdge(edge);
    }
    to->document()->scheduleAccessLevelUpdate();
    Q_EMIT q->documentUnlinked(QByteArray(from->id()), QByteArray(to->id()));
}

// One timer for all documents: thousands may be linked at a time.

void Context::Private::delayDependencyUpdate(LinkedDocument *document)
{
    dependencyUpdates.push_back(
        { std::chrono::steady_clock::now() + tuning::dependencyUpdateDelay, document });
    if (dependencyUpdates.size() == 1) {
        startDependencyTimer();
    }
}

void Context::Private::startDependencyTimer()
{
    using std::chrono::milliseconds;
    const auto remaining = std::chrono::duration_cast<milliseconds>(
        dependencyUpdates.front().due - std::chrono::steady_clock::now());
    QTimer::singleShot(std::max(remaining, milliseconds(0)), q, [this] { runDependencyUpdates(); });
}

void Context::Private::runDependencyUpdates()
{
    // Timers may be a little early.
    constexpr std::chrono::milliseconds tolerance(10);
    const auto now = std::chrono::steady_clock::now() + tolerance;
    while (!dependencyUpdates.empty() && dependencyUpdates.front().due <= now) {
        if (LinkedDocument *document = dependencyUpdates.front().document) {
            addDocumentGraphTask(std::make_unique<DocumentDependencyUpdateTask>(document));
        }
        dependencyUpdates.pop_front();
    }
    if (!dependencyUpdates.empty()) {
        startDependencyTimer();
    }
}

// Bookkeeping

void Context::markDirty(LinkedDocument *document)
{
    d->markDirty(document);
}

void Context::markClean(LinkedDocument *document)
{
    d->markClean(document);
}

void Context::reportDocumentChange(Document *document)
{
    d->reportDocumentChange(document);
}

void Context::reportLocalStateChange(Document *document)
{
    d->reportLocalStateChange(document);
}

void Context::Private::markDirty(LinkedDocument *document)
{
    const bool wasClean = dirtyDocuments.isEmpty();
    dirtyDocuments.insert(document);
    if (wasClean) {
        Q_EMIT q->hasLocalChangesChanged();
    }
}

void Context::Private::markClean(LinkedDocument *document)
{
    if (dirtyDocuments.remove(document) && dirtyDocuments.isEmpty()) {
        Q_EMIT q->hasLocalChangesChanged();
    }
}

void Context::Private::reportDocumentChange(Document *document)
{
    Q_EMIT q->documentChanged(document);
}

void Context::Private::reportLocalStateChange(Document *document)
{
    locals.removeOne(document);
    Q_EMIT q->localDocumentsChanged();
}

} // namespace vo::data
