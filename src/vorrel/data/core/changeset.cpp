// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/core/changeset.h>

#include <vorrel/data/base/clock_p.h>
#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/base/tuning_p.h>
#include <vorrel/data/core/change.h>

#include <QtCore/QHash>

#include <algorithm>
#include <memory>

namespace vo::data {

ChangeSet::ChangeSet()
    : m_timestamp(Clock::instance().currentMSecsSinceEpoch())
{ }

ChangeSet::~ChangeSet()
{
    qDeleteAll(m_changes);
}

void ChangeSet::beginNested()
{
    m_checkpoints.append(int(m_changes.size()));
    m_nesting.ref();
}

bool ChangeSet::endNested()
{
    m_checkpoints.removeLast();
    return m_nesting.deref();
}

int ChangeSet::nesting() const
{
    return m_nesting.loadRelaxed();
}

void ChangeSet::add(Change *change)
{
    auto place = m_changes.size();
    while (place > 0 && m_changes.at(place - 1)->number() > change->number()) {
        --place;
    }
    m_changes.insert(place, change);
}

void ChangeSet::rollback()
{
    if (m_checkpoints.isEmpty()) {
        qCCritical(lcData, "Attempt to roll back invalid change set - this is a bug!");
        return;
    }
    const int target = m_checkpoints.constLast();
    while (m_changes.size() > target) {
        const std::unique_ptr<Change> change(m_changes.takeLast());
        change->unapply();
    }
}

void ChangeSet::compress()
{
    QHash<quint64, Change *> firsts;
    firsts.reserve(m_changes.size());
    QList<Change *> kept;
    kept.reserve(m_changes.size());
    for (Change *change : std::as_const(m_changes)) {
        if (!change->isValid()) {
            delete change;
            continue;
        }
        if (const quint64 key = change->uniqueKey()) {
            Change *&first = firsts[key];
            if (first && first->canMergeWith(change)) {
                first->mergeWith(change);
                delete change;
                continue;
            }
            if (first) {
                qCCritical(lcData, "Mergeable change failed to merge: %d", change->type());
            }
            first = change;
        }
        kept.append(change);
    }
    m_changes = kept;
}

bool ChangeSet::isEmpty() const
{
    return m_changes.isEmpty();
}

void ChangeSet::apply()
{
    for (Change *change : std::as_const(m_changes)) {
        change->apply();
    }
}

void ChangeSet::unapply()
{
    for (auto i = m_changes.size(); i > 0; --i) {
        m_changes.at(i - 1)->unapply();
    }
}

bool ChangeSet::merge(ChangeSet *next)
{
    const bool mergeable = next->m_timestamp - m_timestamp <= tuning::undoMergeWindow.count()
        && std::equal(m_changes.begin(), m_changes.end(), next->m_changes.begin(),
                      next->m_changes.end(), [](const Change *change, const Change *newer) {
                          return change->canMergeWith(newer);
                      });
    if (mergeable) {
        for (auto i = m_changes.size(); i > 0; --i) {
            m_changes.at(i - 1)->mergeWith(next->m_changes.at(i - 1));
        }
    }
    return mergeable;
}

void ChangeSet::setData(const QString &key, const QVariant &value)
{
    m_data.insert(key, value);
}

QVariant ChangeSet::data(const QString &key) const
{
    return m_data.value(key);
}

} // namespace vo::data
