// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/properties/documentpropertybase.h>

#include <vorrel/data/base/jsonkeys_p.h>
#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/core/documentstore_p.h>
#include <vorrel/data/core/genericchange.h>
#include <vorrel/data/core/inlinedocument.h>
#include <vorrel/data/core/linkeddocument.h>

namespace vo::data {

bool DocumentPropertyBase::canDelete() const
{
    return d_()->accessLevel() == Document::WriteAccess;
}

DocumentStore &DocumentPropertyBase::store() const
{
    return documentStore(d_()->context());
}

bool DocumentPropertyBase::acceptsContext(const Document *document) const
{
    if (document && document->context() != d_()->context()) {
        qCWarning(lcData, "Cannot set document from different context");
        return false;
    }
    return true;
}

bool DocumentPropertyBase::liesWithin(const InlineDocument *document) const
{
    for (const QObject *around = d_(); around; around = around->parent()) {
        if (around == document) {
            return true;
        }
    }
    return false;
}

void DocumentPropertyBase::applyEdit(std::function<bool(bool)> assign)
{
    // The function runs only while the document lives, and with it this property.
    apply(std::make_unique<GenericChange>(
        d_(), [document = d_(), assign = std::move(assign)](bool forward) {
            const QPointer<Document> guard(document);
            if (assign(forward) && guard) {
                document->markDirty();
            }
        }));
}

bool DocumentPropertyBase::deliverNotification()
{
    return !std::exchange(m_untold, false) || notify();
}

// Linked documents

// The handler goes first: nothing is left to do when a slot has destroyed the document.

bool DocumentPropertyBase::attach(Document *target)
{
    if (auto *linked = qobject_cast<LinkedDocument *>(target)) {
        linked->addDeleteHandler(this, d_());
    }
    const QPointer<Document> document(d_());
    document->attachDocument(target);
    return !document.isNull();
}

bool DocumentPropertyBase::detach(Document *target)
{
    abandon(target);
    const QPointer<Document> document(d_());
    document->detachDocument(target);
    return !document.isNull();
}

void DocumentPropertyBase::abandon(Document *target)
{
    if (auto *linked = qobject_cast<LinkedDocument *>(target)) {
        linked->removeDeleteHandler(this);
    }
}

// Inline documents

InlineDocument *DocumentPropertyBase::createInlineDocument(const QJsonObject &object) const
{
    return InlineDocument::create(object, d_());
}

InlineDocument *DocumentPropertyBase::updateInlineDocument(InlineDocument *current,
                                                           const QJsonObject &object) const
{
    const QString type = object.value(jsonkeys::type).toString();
    if (type.isEmpty()) {
        return isConstant() ? current : nullptr;
    }
    if (current && current->type() == type) {
        const QPointer<InlineDocument> guard(current);
        current->assignData(object);
        return guard;
    }
    return createInlineDocument(object);
}

void DocumentPropertyBase::adopt(InlineDocument *document)
{
    document->setOwner(this);
}

void DocumentPropertyBase::release(InlineDocument *document)
{
    document->setOwner(nullptr);
}

void DocumentPropertyBase::disown(InlineDocument *document)
{
    document->m_owner = nullptr;
}

void DocumentPropertyBase::inlineDocumentDestroyed(InlineDocument * /*document*/) { }

void DocumentPropertyBase::discard(InlineDocument *document)
{
    document->deleteIfUnheld();
}

InlineDocumentHold::InlineDocumentHold(InlineDocument *document)
    : m_document(document)
{
    if (m_document) {
        ++m_document->m_holds;
    }
}

InlineDocumentHold::InlineDocumentHold(const InlineDocumentHold &other)
    : InlineDocumentHold(other.m_document.data())
{ }

InlineDocumentHold::~InlineDocumentHold()
{
    if (m_document) {
        --m_document->m_holds;
        m_document->deleteIfUnheld();
    }
}

InlineDocument *InlineDocumentHold::document() const
{
    return m_document;
}

} // namespace vo::data
