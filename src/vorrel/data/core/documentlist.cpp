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
    if (add(document)) {
        tell();
    }
}

bool DocumentList::add(Document *document)
{
    const bool isForbidden = (m_rules.testFlag(NoNulls) && !document)
        || (m_rules.testFlag(NoDuplicates) && contains(document));
    if (isForbidden) {
        return false;
    }
    prune(); // a new document may stand where a destroyed one was
    m_documents.append(document);
    if (m_indexed) {
        m_index.insert(document);
    }
    return true;
}

bool DocumentList::removeFirst(const Document *document)
{
    if (!contains(document)) {
        return false;
    }
    prune();
    const auto end = m_documents.end();
    const auto next = m_documents.erase(std::find(m_documents.begin(), end, document));
    if (std::find(next, m_documents.end(), document) == m_documents.end()) {
        m_index.remove(document);
    }
    return true;
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
        m_gaps.clear();
        m_index = {};
        m_indexed = false;
    }
    return std::exchange(m_shrunk, false) || differs;
}

DocumentList::Gap DocumentList::lastGap() const
{
    prune();
    Gap gap;
    for (auto place = m_gaps.rbegin(); place != m_gaps.rend(); ++place) {
        if (gap.size > 0 && *place != gap.place - 1) {
            break;
        }
        gap = { *place, gap.size + 1 };
    }
    return gap;
}

void DocumentList::closeGap(Gap gap)
{
    prune();
    const auto begin = m_documents.begin() + gap.place;
    m_documents.erase(begin, begin + gap.size);
    const auto first = std::lower_bound(m_gaps.begin(), m_gaps.end(), gap.place);
    const auto behind = m_gaps.erase(first, first + gap.size);
    std::for_each(behind, m_gaps.end(), [gap](int &place) { place -= gap.size; });
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
        for (int place = 0; place < m_documents.size(); ++place) {
            if (m_documents.at(place) && isGone(m_documents.at(place))) {
                m_documents[place] = nullptr;
                m_gaps.push_back(place);
            }
        }
        std::sort(m_gaps.begin(), m_gaps.end());
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
