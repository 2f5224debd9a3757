// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/models/sorters/sortcriterion.h>

namespace vo::data {

SortCriterion::SortCriterion(QObject *parent)
    : QObject(parent)
{
    connect(this, &SortCriterion::enabledChanged, this, &SortCriterion::updateRequired);
    connect(this, &SortCriterion::descendingChanged, this, &SortCriterion::updateRequired);
}

SortCriterion::~SortCriterion() = default;

bool SortCriterion::enabled() const
{
    return m_enabled;
}

void SortCriterion::setEnabled(bool enabled)
{
    if (enabled != m_enabled) {
        m_enabled = enabled;
        Q_EMIT enabledChanged();
    }
}

bool SortCriterion::descending() const
{
    return m_descending;
}

void SortCriterion::setDescending(bool descending)
{
    if (descending != m_descending) {
        m_descending = descending;
        Q_EMIT descendingChanged();
    }
}

} // namespace vo::data

#include "moc_sortcriterion.cpp"
