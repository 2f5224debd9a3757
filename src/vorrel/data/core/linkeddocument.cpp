// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// LinkedDocument: identity, revision, dirtiness, label and deletion.

#include <vorrel/data/core/linkeddocument.h>

#include <vorrel/data/base/clock_p.h>
#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/base/textids_p.h>
#include <vorrel/data/core/document_p.h>
#include <vorrel/data/core/documentnode.h>
#include <vorrel/data/core/documenttasks_p.h>
#include <vorrel/data/core/ideletehandler.h>
#include <vorrel/data/core/linkeddocument_p.h>
#include <vorrel/data/properties/documentpropertybase.h>

#include <vorrel/core/version.h>

#include <QtCore/QCryptographicHash>
#include <QtCore/QPointer>
#include <QtCore/QStringList>
#include <QtCore/QUuid>

#include <algorithm>

namespace vo::data {

LinkedDocument::Private::Private(LinkedDocument *document, Context *owner)
    : q(document)
    , context(owner)
    , store(documentStore(owner))
    , created(Clock::instance().currentMSecsSinceEpoch())
    , creationVersion(Version::currentVersion())
    , deleted("deleted", document)
    , label("label", document)
{ }

LinkedDocument::LinkedDocument(Context *context)
    : Document(documentStore(context).documentParent())
    , d(new Private(this, context))
{ }

LinkedDocument::~LinkedDocument()
{
    if (!d->store.isClosing()) {
        leaveAttachments();
        d->store.forgetDocument(this);
    }
}

Context *LinkedDocument::context() const
{
    return d->context;
}

QByteArray LinkedDocument::id() const
{
    if (d->id.isEmpty()) {
        d->id = QUuid::createUuid().toRfc4122().toHex();
    }
    return d->id;
}

void LinkedDocument::setDocumentId(const QString &id)
{
    const QByteArray bytes = id.toLatin1();
    const DocumentNode *node = d->id.isEmpty() ? nullptr : d->store.documentNode(d->id);
    if (bytes != d->id && node && node->isInstantiated() && node->document() == this) {
        // The Context, and whoever refers to the document, knows it by this id.
        qCCritical(lcData, "Document %s cannot take the id \"%s\"", d->id.constData(),
                   bytes.constData());
        return;
    }
    d->id = bytes;
}

QString LinkedDocument::revision() const
{
    return QString::fromLatin1(d->revision);
}

void LinkedDocument::setRevision(const QString &revision)
{
    const QByteArray bytes = revision.toLatin1();
    if (bytes == d->revision) {
        return;
    }
    const bool wasLocal = isLocal();
    d->revision = bytes;
    const QPointer<LinkedDocument> self(this);
    Q_EMIT editedChanged();
    if (self && wasLocal) {
        d->store.reportLocalStateChange(this);
    }
}

bool LinkedDocument::isLocal() const
{
    return d->revision.isEmpty();
}

Document::StorageFlags LinkedDocument::storageFlags() const
{
    return StoreNewDocument;
}

bool LinkedDocument::isInternal() const
{
    return storageFlags().testFlag(CreatedInternally);
}

int LinkedDocument::changeSequenceNumber() const
{
    return d->changeSequence;
}

QDateTime LinkedDocument::created() const
{
    return QDateTime::fromMSecsSinceEpoch(d->created, Qt::UTC);
}

qint64 LinkedDocument::creationTimestamp() const
{
    return d->created;
}

QDateTime LinkedDocument::edited() const
{
    return QDateTime::fromMSecsSinceEpoch(d->edited, Qt::UTC);
}

QString LinkedDocument::creationVersion() const
{
    return d->creationVersion;
}

QSet<QByteArray> LinkedDocument::currentAttachments() const
{
    return d->currentAttachments;
}

void LinkedDocument::setCurrentAttachments(const QSet<QByteArray> &hashes)
{
    d->currentAttachments = hashes;
}

void LinkedDocument::markDirty()
{
    if (isLocked()) {
        return;
    }
    ++d->changeSequence;
    d->edited = Clock::instance().currentMSecsSinceEpoch();
    const QPointer<LinkedDocument> self(this);
    Q_EMIT editedChanged();
    if (!self) {
        return;
    }
    qCDebug(lcTrace, "Marking %s dirty - change sequence %d", id().constData(), d->changeSequence);
    d->store.markDirty(this);
}

void LinkedDocument::markClean(const QString &revision, int sequence,
                               const QSet<QByteArray> &attachments)
{
    const QPointer<LinkedDocument> self(this);
    setRevision(revision);
    if (!self) {
        return;
    }
    d->currentAttachments = attachments;
    if (d->changeSequence != sequence) { // edits arrived during the upload
        if (d->changeSequence == 0 && deleted()) {
            markDirty(); // it was the first upload: until now there was nothing to delete
        }
        return;
    }
    d->changeSequence = 0;
    d->store.markClean(this);
    if (self) {
        scheduleAccessLevelUpdate();
    }
}

void LinkedDocument::reportDocumentChange()
{
    if (d->changeReportPending) {
        return;
    }
    d->changeReportPending = true;
    d->store.addDocumentGraphTask(std::make_unique<DocumentChangeReportTask>(this));
}

void LinkedDocument::deliverDocumentChange()
{
    d->changeReportPending = false;
    d->store.reportDocumentChange(this);
}

// Label

QString LinkedDocument::label() const
{
    return d->label.get();
}

void LinkedDocument::setLabel(const QString &label)
{
    bool accepted = true;
    const QString text = sanitizeLabel(label, accepted);
    if (accepted) {
        d->label.set(text);
    }
}

QString LinkedDocument::sanitizeLabel(const QString &label, bool &accepted) const
{
    accepted = true;
    return label;
}

QString LinkedDocument::typeName() const
{
    return qtTrId(textids::linkedDocumentTypeName);
}

// Deletion

bool LinkedDocument::deleted() const
{
    return d->deleted.get();
}

void LinkedDocument::addDeleteHandler(IDeleteHandler *handler, const Document *owner)
{
    d->deleteHandlers.append({ handler, owner });
}

void LinkedDocument::removeDeleteHandler(IDeleteHandler *handler)
{
    const auto found =
        std::find_if(d->deleteHandlers.begin(), d->deleteHandlers.end(),
                     [handler](const auto &entry) { return entry.handler == handler; });
    if (found != d->deleteHandlers.end()) {
        d->deleteHandlers.erase(found);
    }
}

void LinkedDocument::removeDeleteHandlersOf(const Document *owner)
{
    const auto gone = std::remove_if(d->deleteHandlers.begin(), d->deleteHandlers.end(),
                                     [owner](const auto &entry) { return entry.owner == owner; });
    d->deleteHandlers.erase(gone, d->deleteHandlers.end());
}

void LinkedDocument::setDeleted(bool deleted)
{
    if (d->deleted.get() == deleted || accessLevel() < WriteAccess) {
        return;
    }
    for (const auto &entry : std::as_const(d->deleteHandlers)) {
        if (!entry.handler->canDelete()) {
            return;
        }
    }
    const QPointer<LinkedDocument> self(this);
    if (deleted) {
        d->store.finishIncubation();
    }
    if (self && deleted) {
        purgeReferences();
    }
    if (self) {
        d->deleted.set(deleted);
    }
    if (self && deleted) {
        clearLinks();
    }
    if (self && deleted && isLocal()) {
        // The database never saw it, so its deletion needs no upload.
        markClean(QString(), d->changeSequence, currentAttachments());
    }
}

// No field of another document refers to a deleted one.
void LinkedDocument::purgeReferences()
{
    const QList<Document *> now = referencingDocuments();
    const QList<QPointer<Document>> referencing(now.begin(), now.end());
    const QPointer<LinkedDocument> self(this);
    for (const QPointer<Document> &document : referencing) {
        if (auto *linked = qobject_cast<LinkedDocument *>(document.data()); linked && self) {
            linked->purgeReference(this);
        }
    }
}

void LinkedDocument::releaseReferrers()
{
    const QList<Document *> now = referencingDocuments();
    const QList<QPointer<Document>> referencing(now.begin(), now.end());
    QList<QPointer<LinkedDocument>> owners;
    for (const QPointer<Document> &document : referencing) {
        const Document *owner = document ? document->linkSource() : nullptr;
        if (const auto *linked = qobject_cast<const LinkedDocument *>(owner)) {
            owners.append(const_cast<LinkedDocument *>(linked));
            owners.constLast()->overrideAccessLevel();
        }
    }
    const QPointer<LinkedDocument> self(this);
    purgeReferences();
    if (self) {
        callDeleteHandlers();
    }
    for (const QPointer<LinkedDocument> &owner : std::as_const(owners)) {
        if (owner) {
            owner->scheduleAccessLevelUpdate(); // the override ends
        }
    }
}

// Each handler once: a slot that points at this document again must not keep this going.
void LinkedDocument::callDeleteHandlers()
{
    const QPointer<LinkedDocument> self(this);
    for (auto count = d->deleteHandlers.size(); self && count > 0 && !d->deleteHandlers.isEmpty();
         --count) {
        d->deleteHandlers.takeFirst().handler->removeDocument(this);
    }
}

// A deleted document points at nothing, and nothing points at it.
void LinkedDocument::clearLinks()
{
    const QPointer<LinkedDocument> self(this);
    const std::vector<PropertyBase *> all = properties();
    for (PropertyBase *property : all) {
        if (property->holdsDocuments()) {
            static_cast<DocumentPropertyBase *>(property)->clear();
            if (!self) {
                return;
            }
        }
    }
    clearStructReferences();
    if (self) {
        callDeleteHandlers();
    }
}

// Links to other documents

void LinkedDocument::attachDocument(Document *document)
{
    const QPointer<LinkedDocument> self(this);
    const QPointer<Document> target(document);
    Document::attachDocument(document);
    if (self && target) {
        accessController()->attachDocument(document);
    }
}

void LinkedDocument::detachDocument(Document *document)
{
    const QPointer<LinkedDocument> self(this);
    const QPointer<Document> target(document);
    Document::detachDocument(document);
    if (self && target) {
        accessController()->detachDocument(document);
    }
}

void LinkedDocument::scheduleDependencyUpdate()
{
    if (d->dependencyUpdatePending) {
        return;
    }
    d->dependencyUpdatePending = true;
    d->store.delayDependencyUpdate(this);
}

void LinkedDocument::aggregateDependencies(QSet<const LinkedDocument *> &documents) const
{
    documents.insert(this);
}

void LinkedDocument::updateDependencies()
{
    d->dependencyUpdatePending = false;
    QSet<const LinkedDocument *> wanted;
    Document::aggregateDependencies(wanted);
    if (accessLevel() >= ReadAccess) {
        const QList<LinkedDocument *> references = builtReferences();
        wanted.unite(QSet<const LinkedDocument *>(references.begin(), references.end()));
    }
    DocumentNode *own = d->store.documentNode(id());
    if (!own || own->document() != this) {
        return;
    }
    QList<QByteArray> obsolete;
    for (const DocumentEdge *edge : own->outgoing()) {
        if (!wanted.remove(edge->target->document())) {
            obsolete.append(edge->target->id());
        }
    }
    QList<QByteArray> missing;
    for (const LinkedDocument *document : std::as_const(wanted)) {
        missing.append(document->id());
    }
    const QPointer<LinkedDocument> self(this);
    const auto changeEdges = [&](const QList<QByteArray> &targets, auto operation) {
        for (const QByteArray &targetId : targets) {
            // Looked up each time: a slot may have destroyed nodes, or this document.
            DocumentNode *node = self ? d->store.documentNode(id()) : nullptr;
            DocumentNode *target = node ? d->store.documentNode(targetId) : nullptr;
            if (target) {
                (d->store.*operation)(node, target);
            }
        }
    };
    changeEdges(obsolete, &DocumentStore::unlinkDocuments);
    changeEdges(missing, &DocumentStore::linkDocuments);
}

QByteArray LinkedDocument::subtreeRevision() const
{
    QStringList states;
    QSet<const Document *> seen { this };
    QList<const Document *> open { this };
    while (!open.isEmpty()) {
        const Document *document = open.takeLast();
        if (qobject_cast<const LinkedDocument *>(document)) {
            states.append(QStringLiteral("%1-%2-%3")
                              .arg(document->documentId(), document->revision(),
                                   QString::number(document->changeSequenceNumber())));
        }
        const QList<Document *> targets = document->attached();
        for (const Document *target : targets) {
            if (!seen.contains(target)) {
                seen.insert(target);
                open.append(target);
            }
        }
    }
    states.sort();
    QCryptographicHash hash(QCryptographicHash::Md5);
    for (const QString &state : std::as_const(states)) {
        hash.addData(state.toLatin1());
    }
    return hash.result().toHex();
}

} // namespace vo::data

#include "moc_linkeddocument.cpp"
