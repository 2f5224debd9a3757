// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/properties/propertybase.h>

#include <vorrel/data/core/change.h>
#include <vorrel/data/core/document.h>

#include <QtCore/QPointer>

namespace vo::data {

PropertyBase::PropertyBase(const char *name, Document *document)
    : m_info(&PropertyInfo::get(name, document))
    , m_document(document)
{
    m_document->addProperty(this);
}

PropertyBase::PropertyBase(const PropertyBase &other)
    : m_info(other.m_info)
    , m_document(other.m_document)
{ }

PropertyBase::~PropertyBase() = default;

void PropertyBase::aggregateReferences(QSet<QString> & /*ids*/) const { }

void PropertyBase::emitChangeSignal() const
{
    m_info->emitChangeSignal(m_document);
}

unsigned int PropertyBase::uniqueId() const
{
    return Change::foldedAddress(this);
}

bool PropertyBase::canRead() const
{
    return m_document->accessLevel() >= Document::ReadAccess;
}

bool PropertyBase::canWrite() const
{
    return m_document->accessLevel() >= Document::WriteAccess;
}

bool PropertyBase::notify() const
{
    if (m_document->isLocked()) {
        return true;
    }
    const QPointer<Document> document(m_document);
    emitChangeSignal();
    if (!document) {
        return false;
    }
    document->reportDocumentChange();
    return true;
}

bool PropertyBase::notifyAndMarkDirty()
{
    Document *document = m_document;
    if (!notify()) {
        return false;
    }
    const QPointer<Document> guard(document);
    document->markDirty();
    return !guard.isNull();
}

bool PropertyBase::markDirtyAndNotify()
{
    const QPointer<Document> guard(m_document);
    m_document->markDirty();
    return guard && notify();
}

void PropertyBase::apply(std::unique_ptr<Change> change)
{
    m_document->applyChange(std::move(change));
}

bool PropertyBase::isRecording() const
{
    return m_document->changeRecordingActive();
}

void PropertyBase::record(std::unique_ptr<Change> change)
{
    m_document->recordChange(change.release());
}

} // namespace vo::data
