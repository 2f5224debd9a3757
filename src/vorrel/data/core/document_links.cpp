// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// Document: what it points at, what points at it, and the walks along these links. Links come from
// the database, so every walk keeps its own stack and enters no document twice.

#include <vorrel/data/base/qmlobjectlist_p.h>
#include <vorrel/data/base/textids_p.h>
#include <vorrel/data/core/document_p.h>
#include <vorrel/data/core/documentstore_p.h>
#include <vorrel/data/core/linkeddocument.h>
#include <vorrel/data/properties/attachmentproperty.h>
#include <vorrel/data/properties/documentpropertybase.h>
#include <vorrel/data/store/attachmentstore.h>

#include <vorrel/util/message.h>

#include <QtCore/QPointer>

namespace vo::data {

void Document::attachDocument(Document *document)
{
    if (!document) {
        return;
    }
    // Entered on both sides before a slot may destroy one of them.
    const QPointer<Document> self(this);
    d->attached.append(document);
    document->addReferencingDocument(this);
    Q_EMIT attachedDocumentsChanged();
    if (self) {
        scheduleDependencyUpdate();
    }
}

void Document::detachDocument(Document *document)
{
    if (!document) {
        return;
    }
    const QPointer<Document> self(this);
    d->attached.removeOne(document);
    if (!d->attached.contains(document)) {
        document->removeReferencingDocument(this);
    }
    Q_EMIT attachedDocumentsChanged();
    if (self) {
        scheduleDependencyUpdate();
    }
}

void Document::addReferencingDocument(Document *document)
{
    if (document) {
        d->referencing.insert(document);
    }
}

void Document::removeReferencingDocument(Document *document)
{
    d->referencing.remove(document);
}

// The document is about to go: nobody may keep a pointer to it.
void Document::leaveAttachments()
{
    for (Document *target : std::as_const(d->attached)) {
        target->removeReferencingDocument(this);
        if (auto *linked = qobject_cast<LinkedDocument *>(target)) {
            linked->removeDeleteHandlersOf(this);
        }
    }
    for (Document *source : std::as_const(d->referencing)) {
        source->d->attached.removeAll(this);
    }
    d->attached.clear();
    d->referencing.clear();
}

QList<Document *> Document::attached() const
{
    QList<Document *> unique;
    QSet<Document *> seen;
    for (Document *document : std::as_const(d->attached)) {
        if (!seen.contains(document)) {
            seen.insert(document);
            unique.append(document);
        }
    }
    return unique;
}

QList<Document *> Document::referencingDocuments() const
{
    return d->referencing.values();
}

Document *Document::attachedDocument(const QString &id) const
{
    for (Document *document : std::as_const(d->attached)) {
        if (document->documentId() == id) {
            return document;
        }
    }
    return nullptr;
}

QQmlListProperty<Document> Document::attachedDocuments()
{
    return ReadOnlyObjectList<Document>::property(
        this, [](QObject *owner) { return static_cast<Document *>(owner)->attached(); });
}

// The documents that the properties point at, and with them a LinkedDocument's references.
QList<Document *> Document::linkTargets() const
{
    QList<Document *> targets;
    for (const DocumentPropertyBase *property : d->documentProperties) {
        targets.append(property->referencedDocuments());
    }
    if (const auto *linked = qobject_cast<const LinkedDocument *>(this)) {
        const QList<QObject *> references = linked->references(0);
        for (QObject *reference : references) {
            targets.append(static_cast<Document *>(reference));
        }
    }
    return targets;
}

bool Document::isComplete() const
{
    if (d->complete) {
        return true;
    }
    const quint64 walk = Private::newWalk();
    static_cast<void>(d->enter(walk));
    std::vector<const Document *> seen { this };
    for (std::size_t next = 0; next < seen.size(); ++next) {
        for (const DocumentPropertyBase *property : seen[next]->d->documentProperties) {
            if (!property->isComplete()) {
                return false; // asking on would build what is missing
            }
            const QList<Document *> targets = property->referencedDocuments();
            for (const Document *target : targets) {
                if (!target->d->complete && target->d->enter(walk)) {
                    seen.push_back(target);
                }
            }
        }
    }
    // Whatever was reached is complete, since all that it reaches is among the seen.
    for (const Document *document : seen) {
        document->d->complete = true;
    }
    return true;
}

void Document::completeCache()
{
    completeCache({ this });
}

void Document::completeCache(const QList<Document *> &documents)
{
    if (documents.isEmpty()
        || documentStore(documents.first()->context()).attachmentDownloadEnabled()) {
        return;
    }
    const quint64 walk = Private::newWalk();
    QList<Document *> pending = documents;
    QList<QPointer<Document>> all;
    while (!pending.isEmpty()) {
        Document *document = pending.takeLast();
        if (document->d->enter(walk)) {
            all.append(document);
            pending.append(document->linkTargets());
        }
    }
    // The first one makes the Context busy, of which slots hear.
    for (const QPointer<Document> &document : all) {
        const QList<AttachmentProperty *> files =
            document ? document->attachmentProperties() : QList<AttachmentProperty *>();
        for (AttachmentProperty *file : files) {
            if (document && AttachmentStore::isHash(file->rawHash())) {
                file->fetch({});
            }
        }
    }
}

void Document::aggregateReferences(QSet<QString> &ids) const
{
    for (const PropertyBase *property : d->properties) {
        property->aggregateReferences(ids);
    }
}

void Document::aggregateDependencies(QSet<const LinkedDocument *> &documents) const
{
    for (const DocumentPropertyBase *property : d->documentProperties) {
        if (property->isComplete()) {
            const QList<Document *> targets = property->referencedDocuments();
            for (const Document *target : targets) {
                target->aggregateDependencies(documents);
            }
        }
    }
}

namespace {

struct Step
{
    const Document *document;
    QList<Document *> targets;
    int next = 0;
};

} // namespace

bool Document::performCycleCheck(Document *target) const
{
    const Document *source = linkSource();
    if (!source || !target) {
        return false;
    }
    // Depth first, the path being the documents of the steps. What was left without success
    // cannot succeed by another way, so it is not entered twice.
    const quint64 walk = Private::newWalk();
    static_cast<void>(target->d->enter(walk));
    std::vector<Step> path { { target, target->linkTargets() } };
    while (!path.empty() && path.back().document != source) {
        Step &step = path.back();
        if (step.next == step.targets.size()) {
            path.pop_back();
            continue;
        }
        const Document *next = step.targets.at(step.next++);
        if (next->d->enter(walk)) {
            path.push_back({ next, next->linkTargets() });
        }
    }
    if (path.empty()) {
        return false;
    }

    const auto variant = [](const Document *document) {
        return QVariant::fromValue<QObject *>(const_cast<Document *>(document));
    };
    QVariantList cycle { variant(source) };
    for (const Step &step : path) {
        if (!step.document->label().isEmpty()) {
            cycle.append(variant(step.document));
        }
    }
    cycle.append(variant(source));
    util::Message::send(QLatin1String(textids::dependencyCycle),
                        { { QStringLiteral("source"), variant(source) },
                          { QStringLiteral("target"), variant(target) },
                          { QStringLiteral("cycle"), cycle } });
    return true;
}

} // namespace vo::data
