// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/context/rootdocument.h>

#include <vorrel/data/context/context.h>
#include <vorrel/data/context/loadrequest.h>
#include <vorrel/data/core/document.h>

namespace vo::data {

RootDocument::RootDocument(QObject *parent)
    : QObject(parent)
{ }

RootDocument::~RootDocument() = default;

Context *RootDocument::context() const
{
    return m_context;
}

void RootDocument::setContext(Context *context)
{
    if (context == m_context) {
        return;
    }
    if (m_context) {
        m_context->disconnect(this);
    }
    m_context = context;
    if (context) {
        connect(context, &Context::documentAdded, this, &RootDocument::handleDocumentAdd);
    }
    const QPointer<RootDocument> self(this);
    Q_EMIT contextChanged();
    if (self) {
        update();
    }
}

QString RootDocument::documentId() const
{
    return m_documentId;
}

void RootDocument::setDocumentId(const QString &id)
{
    if (id == m_documentId) {
        return;
    }
    m_documentId = id;
    const QPointer<RootDocument> self(this);
    Q_EMIT documentIdChanged();
    if (self) {
        update();
    }
}

Document *RootDocument::document() const
{
    return m_document && !m_document->deleted() ? m_document.data() : nullptr;
}

void RootDocument::update()
{
    const QPointer<RootDocument> self(this);
    setDocument(nullptr);
    if (!self) {
        return;
    }
    if (m_pendingRequest) {
        m_pendingRequest->disconnect(this); // it would end the next one
        m_pendingRequest.clear();
    }
    if (m_context && !m_documentId.isEmpty()) {
        const QPointer<LoadRequest> request(m_context->loadDocument(m_documentId));
        if (self && request && !m_pendingRequest) { // else a slot wants another one by now
            m_pendingRequest = request;
            connect(request, &LoadRequest::finished, this, &RootDocument::loadFinished);
        }
    }
}

void RootDocument::loadFinished()
{
    if (m_pendingRequest && m_pendingRequest == sender()) {
        m_pendingRequest.clear();
        const QPointer<RootDocument> self(this);
        const QPointer<Document> document(m_context ? m_context->loadedDocument(m_documentId)
                                                    : nullptr);
        if (self) {
            setDocument(document);
        }
    }
}

void RootDocument::handleDocumentAdd(Document *document)
{
    if (document->documentId() == m_documentId) {
        setDocument(document);
    }
}

void RootDocument::setDocument(Document *document)
{
    if (document == m_document) {
        return;
    }
    if (m_document) {
        m_document->disconnect(this);
    }
    m_document = document;
    if (document) {
        connect(document, &Document::deletedChanged, this, &RootDocument::documentChanged);
        connect(document, &QObject::destroyed, this, &RootDocument::documentChanged);
    }
    Q_EMIT documentChanged();
}

} // namespace vo::data

#include "moc_rootdocument.cpp"
