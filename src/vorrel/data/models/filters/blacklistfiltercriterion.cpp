// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/models/filters/blacklistfiltercriterion.h>

#include <vorrel/data/core/document.h>
#include <vorrel/data/core/documentlist_p.h>
#include <vorrel/data/models/criterion_p.h>

namespace vo::data {

namespace {

struct BlacklistFilterFunctor
{
    bool operator()(const Document *document) const { return !blacklist.contains(document); }

    QSet<const Document *> blacklist;
};

} // namespace

BlacklistFilterCriterion::BlacklistFilterCriterion(QObject *parent)
    : FilterCriterion(parent)
    , m_blacklist(new DocumentList(
          this,
          [this] {
              emitBoth(this, &BlacklistFilterCriterion::blacklistChanged,
                       &BlacklistFilterCriterion::updateRequired);
          },
          DocumentList::NoDuplicates))
{ }

BlacklistFilterCriterion::~BlacklistFilterCriterion() = default;

bool BlacklistFilterCriterion::skip() const
{
    return m_blacklist->objects().isEmpty();
}

FilterFunction BlacklistFilterCriterion::createFilterFunction() const
{
    const QList<Document *> &listed = m_blacklist->objects();
    return BlacklistFilterFunctor { { listed.cbegin(), listed.cend() } };
}

QQmlListProperty<Document> BlacklistFilterCriterion::blacklist()
{
    return m_blacklist->property(this);
}

} // namespace vo::data

#include "moc_blacklistfiltercriterion.cpp"
