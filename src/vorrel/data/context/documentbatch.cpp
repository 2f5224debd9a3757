// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/context/documentbatch_p.h>

#include <vorrel/data/base/jsonkeys_p.h>
#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/context/context.h>

#include <QtCore/QDebug>

namespace vo::data {

DocumentBatch::DocumentBatch(QHash<QString, QJsonObject> documents)
    : m_documents(std::move(documents))
    , m_order(m_documents.keys())
{
    m_elapsed.start();
}

void DocumentBatch::enter(const QString &id, const Context *context)
{
    if (!m_entered.contains(id) && m_documents.contains(id) && !context->isLoaded(id)) {
        m_entered.insert(id);
        m_path.push_back({ id, m_documents.value(id).value(jsonkeys::references).toArray() });
    }
}

bool DocumentBatch::addNext(Context *context)
{
    for (;;) {
        while (m_path.empty()) {
            if (m_nextInOrder == m_order.size()) {
                return false;
            }
            enter(m_order.at(m_nextInOrder++), context);
        }
        Visit &visit = m_path.back();
        if (visit.next == visit.references.size()) {
            break;
        }
        const QString reference = visit.references.at(visit.next++).toString();
        if (reference == visit.id) {
            qCWarning(lcLoadQueue) << "Document" << visit.id << "references itself";
        } else {
            enter(reference, context);
        }
    }
    // The state is complete before the Context tells anybody of the document.
    const QString id = m_path.back().id;
    m_path.pop_back();
    const QJsonObject data = m_documents.take(id);
    ++m_loaded;
    if (data.contains(jsonkeys::wasCached)) {
        ++m_cached;
    }
    context->addDocumentNode(id.toLatin1(), data);
    return true;
}

QSet<QString> DocumentBatch::remaining() const
{
    return QSet<QString>(m_documents.keyBegin(), m_documents.keyEnd());
}

void DocumentBatch::report() const
{
    qCInfo(lcLoadQueue) << "Loaded" << m_loaded << "documents:" << m_cached << "cached,"
                        << m_loaded - m_cached << "remote in" << m_elapsed.elapsed() << "msecs";
}

} // namespace vo::data
