// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/properties/linkeddocumentproperty.h>

#include <vorrel/data/core/documentids_p.h>
#include <vorrel/data/core/documentnode.h>
#include <vorrel/data/core/documentstore_p.h>

namespace vo::data {

LinkedDocumentPropertyBase::LinkedDocumentPropertyBase(const char *name, Document *document)
    : DocumentPropertyBase(name, document)
{ }

LinkedDocumentPropertyBase::~LinkedDocumentPropertyBase()
{
    abandon(m_current);
}

int LinkedDocumentPropertyBase::type() const
{
    return SingleDocument;
}

void LinkedDocumentPropertyBase::fromJson(const QJsonValue &json)
{
    m_pendingId.clear();
    const QString text = json.toString();
    const QByteArray id = isStorableId(text) ? text.toLatin1() : QByteArray();
    const DocumentNode *node = id.isEmpty() ? nullptr : store().documentNode(id);
    if (node && !node->isInstantiated()) {
        m_pendingId = id;
        store().incubate(this);
        return;
    }
    LinkedDocument *document = node ? node->document() : nullptr;
    assign(document && accepts(document) ? document : nullptr);
}

bool LinkedDocumentPropertyBase::incubate(Context * /*context*/)
{
    const QPointer<Document> guard(d_());
    resolve();
    if (guard) {
        deliverNotification();
    }
    return false;
}

void LinkedDocumentPropertyBase::resolve()
{
    if (m_pendingId.isEmpty()) {
        return;
    }
    const QPointer<Document> guard(d_());
    const QByteArray id = m_pendingId;
    // The node may have gone since, and building the document may change this property.
    const DocumentNode *node = store().documentNode(id);
    LinkedDocument *document = node ? node->document() : nullptr;
    if (guard && m_pendingId == id) {
        m_pendingId.clear();
        if (exchange(document && accepts(document) ? document : nullptr)) {
            notifyLater();
        }
    }
}

LinkedDocument *LinkedDocumentPropertyBase::target() const
{
    const_cast<LinkedDocumentPropertyBase *>(this)->resolve();
    return m_current;
}

LinkedDocument *LinkedDocumentPropertyBase::orFallback(LinkedDocument *target) const
{
    const bool mayFallBack = d_()->isLocked() || !d_()->deleted();
    return target || !mayFallBack ? target : m_fallback.data();
}

// Data and edits alike end here. False when nothing changed, or when a slot destroyed the document.
bool LinkedDocumentPropertyBase::assign(LinkedDocument *target)
{
    return exchange(target) && notify();
}

// The same without telling.
bool LinkedDocumentPropertyBase::exchange(LinkedDocument *target)
{
    target = orFallback(target);
    if (target == m_current) {
        return false;
    }
    const QPointer<Document> guard(d_());
    const QPointer<LinkedDocument> old = std::exchange(m_current, target);
    if (old) {
        detach(old);
    }
    if (guard && m_current && m_current == target) {
        attach(target);
    }
    return !guard.isNull();
}

bool LinkedDocumentPropertyBase::setTarget(LinkedDocument *target)
{
    if (!canWrite() || !acceptsContext(target) || d_()->performCycleCheck(target)) {
        return false;
    }
    const QPointer<Document> guard(d_());
    const QPointer<LinkedDocument> wanted(target);
    resolve();
    if (!guard || wanted != target || orFallback(target) == m_current) {
        return false;
    }
    applyEdit([this, wanted, old = m_current](bool forward) {
        m_pendingId.clear();
        return assign(forward ? wanted : old);
    });
    return true;
}

void LinkedDocumentPropertyBase::setFallbackTarget(LinkedDocument *fallback)
{
    const QPointer<LinkedDocument> former = std::exchange(m_fallback, fallback);
    if (m_current == former) {
        assign(nullptr);
    }
}

QString LinkedDocumentPropertyBase::storedId() const
{
    if (!m_pendingId.isEmpty()) {
        return QString::fromLatin1(m_pendingId);
    }
    return m_current && m_current != m_fallback ? m_current->documentId() : QString();
}

QJsonValue LinkedDocumentPropertyBase::toJson() const
{
    const QString id = storedId();
    return id.isEmpty() ? QJsonValue(QJsonValue::Null) : QJsonValue(id);
}

void LinkedDocumentPropertyBase::aggregateReferences(QSet<QString> &ids) const
{
    const QString id = storedId();
    if (!id.isEmpty()) {
        ids.insert(id);
    }
}

void LinkedDocumentPropertyBase::copy(PropertyBase *source)
{
    const auto *other = static_cast<LinkedDocumentPropertyBase *>(source);
    setTarget(other->canRead() ? other->target() : nullptr);
}

void LinkedDocumentPropertyBase::clear()
{
    setTarget(nullptr);
}

bool LinkedDocumentPropertyBase::isComplete() const
{
    return m_pendingId.isEmpty();
}

QList<Document *> LinkedDocumentPropertyBase::referencedDocuments() const
{
    LinkedDocument *document = target();
    return document ? QList<Document *> { document } : QList<Document *>();
}

void LinkedDocumentPropertyBase::removeDocument(Document *document)
{
    if (document == target()) {
        setTarget(nullptr);
    }
}

} // namespace vo::data
