// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/custom/proxies/datafiltercriterion.h>

#include <vorrel/data/models/criterion_p.h>

namespace vo::data {

DataFilterCriterion::~DataFilterCriterion() = default;

bool DataFilterCriterion::inverted() const
{
    return m_inverted;
}

void DataFilterCriterion::setInverted(bool inverted)
{
    configure(this, m_inverted, inverted, &DataFilterCriterion::invertedChanged,
              &DataFilterCriterion::updateRequired);
}

} // namespace vo::data

#include "moc_datafiltercriterion.cpp"
