// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/core/documentnode.h>

#include <vorrel/data/base/jsonkeys_p.h>
#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/core/documentstore_p.h>
#include <vorrel/data/core/linkeddocument.h>

#include <QtCore/QPointer>

#include <utility>

namespace vo::data {

DocumentNode::DocumentNode(Context *context, const QByteArray &id, const QJsonObject &data)
    : m_data(data)
    , m_id(id)
    , m_context(context)
{ }

DocumentNode::DocumentNode(LinkedDocument *document)
    : m_id(document->id())
    , m_context(document->context())
    , m_document(document)
{ }

DocumentNode::~DocumentNode()
{
    delete std::exchange(m_document, nullptr);
}

LinkedDocument *DocumentNode::document() const
{
    if (m_document || m_data.isEmpty()) {
        return m_document;
    }
    const QPointer<QObject> context(documentStore(m_context).object());
    const_cast<DocumentNode *>(this)->instantiate();
    return context ? m_document : nullptr; // a slot may have destroyed the Context and this node
}

void DocumentNode::instantiate()
{
    if (m_document || m_data.isEmpty()) {
        return;
    }
    // Given up first: whoever asks again while the document is being made gets no second one.
    QJsonObject data = std::exchange(m_data, QJsonObject());
    const QString id = QString::fromLatin1(m_id);
    if (data.value(jsonkeys::id).toString() != id) {
        qCCritical(lcData, "Document %s holds the id \"%s\"", m_id.constData(),
                   qPrintable(data.value(jsonkeys::id).toString()));
        data.insert(jsonkeys::id, id);
    }
    const QPointer<QObject> context(documentStore(m_context).object());
    LinkedDocument *document = LinkedDocument::create(data, m_context);
    if (context) {
        m_document = document;
    }
}

} // namespace vo::data
