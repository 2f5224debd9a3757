// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/properties/inlinedocumentproperty.h>

#include <vorrel/data/base/jsonkeys_p.h>
#include <vorrel/data/core/genericchange.h>

namespace vo::data {

InlineDocumentPropertyBase::~InlineDocumentPropertyBase()
{
    if (m_current) {
        disown(m_current);
    }
}

int InlineDocumentPropertyBase::type() const
{
    return SingleDocument;
}

void InlineDocumentPropertyBase::fromJson(const QJsonValue &json)
{
    const QPointer<Document> guard(d_());
    const QPointer<InlineDocument> former(m_current);
    const QPointer<InlineDocument> document(updateInlineDocument(m_current, json.toObject()));
    if (guard) {
        assign(document && accepts(document) ? document.data() : nullptr);
    }
    for (const QPointer<InlineDocument> &left : { former, document }) {
        if (left) {
            discard(left); // unless the property holds it
        }
    }
}

QJsonValue InlineDocumentPropertyBase::toJson() const
{
    const QJsonObject json = m_current ? m_current->serialize() : m_blank;
    return json == m_blank ? QJsonValue(QJsonValue::Null) : QJsonValue(json);
}

void InlineDocumentPropertyBase::aggregateReferences(QSet<QString> &ids) const
{
    if (m_current) {
        m_current->aggregateReferences(ids);
    }
}

bool InlineDocumentPropertyBase::assign(InlineDocument *document)
{
    if (document == m_current) {
        return false;
    }
    const QPointer<Document> guard(d_());
    const QPointer<InlineDocument> former = std::exchange(m_current, document);
    m_blank = {};
    if (former) {
        release(former);
    }
    if (guard && m_current && m_current == document) {
        adopt(document);
    }
    if (guard) {
        exchanged(former, m_current);
    }
    return guard && notify();
}

void InlineDocumentPropertyBase::exchanged(InlineDocument * /*former*/,
                                           InlineDocument * /*present*/)
{ }

std::unique_ptr<Change> InlineDocumentPropertyBase::makeChange(InlineDocument *former,
                                                               InlineDocument *present)
{
    const InlineDocumentHold oldHold(former);
    const InlineDocumentHold newHold(present);
    return std::make_unique<GenericChange>(
        d_(), [this, document = d_(), oldHold, newHold](bool forward) {
            const QPointer<Document> guard(document);
            if (assign((forward ? newHold : oldHold).document()) && guard) {
                document->markDirty();
            }
        });
}

bool InlineDocumentPropertyBase::setHeld(InlineDocument *document)
{
    if (!canWrite() || document == m_current || !acceptsContext(document)
        || (document
            && (document->ownerDocument() || liesWithin(document)
                || d_()->performCycleCheck(document)))) {
        return false;
    }
    apply(makeChange(m_current, document));
    return true;
}

InlineDocument *InlineDocumentPropertyBase::heldOrNew()
{
    if (!m_current && !d_()->deleted()) {
        const QPointer<Document> guard(d_());
        const QPointer<InlineDocument> made(
            createInlineDocument({ { jsonkeys::type, documentType() } }));
        if (!guard) {
            return nullptr;
        }
        m_current = made;
        if (made) {
            m_blank = made->serialize();
            adopt(made);
        }
        return guard ? m_current.data() : nullptr;
    }
    return m_current;
}

void InlineDocumentPropertyBase::copy(PropertyBase *source)
{
    const auto *other = static_cast<InlineDocumentPropertyBase *>(source);
    InlineDocument *original = other->canRead() && canWrite() ? other->held() : nullptr;
    setHeld(original ? original->copy(d_()) : nullptr);
}

void InlineDocumentPropertyBase::clear()
{
    setHeld(nullptr);
}

bool InlineDocumentPropertyBase::isComplete() const
{
    return true;
}

QList<Document *> InlineDocumentPropertyBase::referencedDocuments() const
{
    return m_current ? QList<Document *> { m_current } : QList<Document *>();
}

void InlineDocumentPropertyBase::removeDocument(Document *document)
{
    if (document == m_current) {
        setHeld(nullptr);
    }
}

} // namespace vo::data
