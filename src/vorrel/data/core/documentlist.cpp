// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/core/documentlist_p.h>

#include <vorrel/data/core/document.h>

#include <algorithm>

namespace vo::data {

DocumentList::DocumentList(QObject *owner, std::function<void()> changed, Rules rules)
    : m_owner(owner)
    , m_changed(std::move(changed))
    , m_rules(rules)
{ }

const QList<Document *> &DocumentList::objects() const
{
    prune();
    return m_documents;
}

bool DocumentList::contains(const Document *document) const
{
    return index().contains(document);
}

void DocumentList::append(Document *document)
{
    const bool isForbidden = (m_rules.testFlag(NoNulls) && !document)
        || (m_rules.testFlag(NoDuplicates) && contains(document));
    if (isForbidden) {
        return;
    }
    prune(); // a new document may stand where a destroyed one was
    m_documents.append(document);
    if (m_indexed) {
        m_index.insert(document);
    }
    tell();
}

void DocumentList::clear()
{
    if (!objects().isEmpty()) {
        assign({});
        tell();
    }
}

bool DocumentList::assign(const QList<Document *> &documents)
{
    // Not by the operator: that of Qt 6 hands null to memcmp() for empty lists.
    const QList<Document *> &former = objects();
    const bool differs =
        !std::equal(former.cbegin(), former.cend(), documents.cbegin(), documents.cend());
    if (differs) {
        m_documents = documents;
        m_index = {};
        m_indexed = false;
    }
    return std::exchange(m_shrunk, false) || differs;
}

void DocumentList::documentDestroyed(const Document *document)
{
    if (m_documents.isEmpty() || !index().remove(document)) {
        return;
    }
    m_stale = true;
    m_shrunk = true;
    if (m_owner && !m_tellScheduled) {
        m_tellScheduled = true;
        const auto tellOfLoss = [this] {
            m_tellScheduled = false;
            if (m_shrunk) {
                tell();
            }
        };
        QMetaObject::invokeMethod(m_owner, tellOfLoss, Qt::QueuedConnection);
    }
}

void DocumentList::tell()
{
    m_shrunk = false;
    const auto changed = m_changed; // which may destroy this
    if (changed) {
        changed();
    }
}

void DocumentList::prune() const
{
    if (!m_stale) {
        return;
    }
    m_stale = false;
    const auto isGone = [this](const Document *document) { return !m_index.contains(document); };
    if (m_rules.testFlag(KeepPlaces)) {
        std::replace_if(m_documents.begin(), m_documents.end(), isGone, nullptr);
    } else {
        m_documents.erase(std::remove_if(m_documents.begin(), m_documents.end(), isGone),
                          m_documents.end());
    }
}

QSet<const Document *> &DocumentList::index() const
{
    if (!m_indexed) {
        m_indexed = true;
        m_index = QSet<const Document *>(m_documents.cbegin(), m_documents.cend());
    }
    return m_index;
}

} // namespace vo::data
