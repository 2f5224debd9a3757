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

void DocumentBatch::follow(const QString &reference, const QString &source, const Context *context)
{
    if (reference == source) {
        qCWarning(lcLoadQueue) << "Document" << source << "references itself";
    } else if (!m_entered.contains(reference)) {
        enter(reference, context);
    } else if (m_documents.contains(reference) && ++m_cycles == 1) { // it is on the way to here
        qCWarning(lcLoadQueue) << "Document" << source << "references" << reference
                               << "which leads back to it";
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
        follow(reference, QString(visit.id), context);
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
    if (m_cycles > 1) {
        qCWarning(lcLoadQueue) << m_cycles << "references of these documents close cycles";
    }
}

} // namespace vo::data
