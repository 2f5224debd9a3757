// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/models/filters/filtercriterion.h>

#include <vorrel/data/models/criterion_p.h>

namespace vo::data {

FilterCriterion::FilterCriterion(QObject *parent)
    : QObject(parent)
{ }

FilterCriterion::~FilterCriterion() = default;

bool FilterCriterion::skip() const
{
    return false;
}

bool FilterCriterion::enabled() const
{
    return m_enabled;
}

void FilterCriterion::setEnabled(bool enabled)
{
    configure(this, m_enabled, enabled, &FilterCriterion::updateRequired,
              &FilterCriterion::enabledChanged);
}

bool FilterCriterion::inverted() const
{
    return m_inverted;
}

void FilterCriterion::setInverted(bool inverted)
{
    configure(this, m_inverted, inverted, &FilterCriterion::updateRequired,
              &FilterCriterion::invertedChanged);
}

} // namespace vo::data

#include "moc_filtercriterion.cpp"
