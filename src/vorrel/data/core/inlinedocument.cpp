// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/core/inlinedocument.h>

#include <vorrel/data/base/jsonkeys_p.h>
#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/core/documentcreatechange.h>
#include <vorrel/data/core/documentstore_p.h>
#include <vorrel/data/core/typeregistry_p.h>
#include <vorrel/data/properties/documentpropertybase.h>

#include <QtCore/QPointer>

#include <utility>

namespace vo::data {

InlineDocument::InlineDocument(Document *parent)
    : Document(parent)
    , m_context(parent->context())
{ }

InlineDocument::~InlineDocument()
{
    if (m_owner) {
        m_owner->inlineDocumentDestroyed(this);
    }
    if (!documentStore(m_context).isClosing()) {
        leaveAttachments();
    }
}

// Creation

InlineDocument *InlineDocument::create(const QJsonObject &json, Document *parent)
{
    const QString type = json.value(jsonkeys::type).toString();
    InlineDocument *document = TypeRegistry::instance().createInline(type, parent);
    if (!document) {
        qCWarning(lcData, "Document %s holds an inline document of the unknown type \"%s\"",
                  parent->id().constData(), qPrintable(type));
        return nullptr;
    }
    return document->complete(json) ? document : nullptr;
}

InlineDocument *InlineDocument::create(const QString &type, Document *parent)
{
    const QPointer<InlineDocument> document(TypeRegistry::instance().createInline(type, parent));
    if (!document) {
        return nullptr;
    }
    document->lock();
    document->executePostRoutines();
    document->initialize();
    if (document && document->changeRecordingActive()) {
        document->recordChange(new DocumentCreateChange(document));
    }
    if (document) {
        document->unlock();
    }
    return document;
}

InlineDocument *InlineDocument::copy(Document *parent)
{
    InlineDocument *document = create(type(), parent);
    if (!document) {
        return nullptr;
    }
    document->copyProperties(this);
    return document;
}

// The property that holds it

Document *InlineDocument::parentDocument() const
{
    return static_cast<Document *>(parent());
}

Document *InlineDocument::ownerDocument() const
{
    return m_owner ? m_owner->ownerDocument() : nullptr;
}

DocumentPropertyBase *InlineDocument::owner() const
{
    return m_owner;
}

void InlineDocument::setOwner(DocumentPropertyBase *owner)
{
    if (owner == m_owner) {
        return;
    }
    const QPointer<InlineDocument> self(this);
    const bool wasDeleted = deleted();
    DocumentPropertyBase *former = std::exchange(m_owner, owner);
    if (former) {
        former->ownerDocument()->detachDocument(this);
    }
    if (self && m_owner && m_owner == owner) {
        if (parent() != owner->ownerDocument()) {
            setParent(owner->ownerDocument());
        }
        owner->ownerDocument()->attachDocument(this);
    }
    if (self && wasDeleted != deleted()) {
        Q_EMIT deletedChanged();
    }
}

void InlineDocument::deleteIfUnheld()
{
    if (m_owner || m_holds > 0) {
        return;
    }
    // Looked at again when the turn comes: whoever took it out of one property may have put it
    // into another.
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (!m_owner && m_holds == 0) {
                delete this;
            }
        },
        Qt::QueuedConnection);
}

bool InlineDocument::deleted() const
{
    return !m_owner;
}

void InlineDocument::setDeleted(bool deleted)
{
    if (deleted && m_owner) {
        m_owner->removeDocument(this);
    }
}

const Document *InlineDocument::linkSource() const
{
    const Document *owner = ownerDocument();
    return owner ? owner->linkSource() : nullptr;
}

void InlineDocument::markDirty()
{
    if (Document *owner = ownerDocument(); owner && !isLocked()) {
        owner->markDirty();
    }
}

void InlineDocument::reportDocumentChange()
{
    if (Document *owner = ownerDocument()) {
        owner->reportDocumentChange(); // as a friend of Document
    }
}

void InlineDocument::scheduleDependencyUpdate()
{
    if (Document *owner = ownerDocument()) {
        owner->scheduleDependencyUpdate();
    }
}

// What the parent answers

Context *InlineDocument::context() const
{
    return m_context;
}

QByteArray InlineDocument::id() const
{
    return parentDocument()->id();
}

QString InlineDocument::revision() const
{
    return parentDocument()->revision();
}

int InlineDocument::changeSequenceNumber() const
{
    return parentDocument()->changeSequenceNumber();
}

QDateTime InlineDocument::created() const
{
    return parentDocument()->created();
}

qint64 InlineDocument::creationTimestamp() const
{
    return parentDocument()->creationTimestamp();
}

QDateTime InlineDocument::edited() const
{
    return parentDocument()->edited();
}

QString InlineDocument::creationVersion() const
{
    return parentDocument()->creationVersion();
}

Document::AccessLevel InlineDocument::accessLevel() const
{
    return parentDocument()->accessLevel();
}

bool InlineDocument::implicitReadAccess() const
{
    return parentDocument()->implicitReadAccess();
}

bool InlineDocument::isLocal() const
{
    return true;
}

void InlineDocument::setDocumentId(const QString & /*id*/) { }

void InlineDocument::setRevision(const QString & /*revision*/) { }

void InlineDocument::markClean(const QString & /*revision*/, int /*sequence*/,
                               const QSet<QByteArray> & /*attachments*/)
{ }

} // namespace vo::data

#include "moc_inlinedocument.cpp"
