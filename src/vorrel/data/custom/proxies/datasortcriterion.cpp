// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/custom/proxies/datasortcriterion.h>

#include <vorrel/data/models/criterion_p.h>

namespace vo::data {

DataSortCriterion::~DataSortCriterion() = default;

bool DataSortCriterion::descending() const
{
    return m_descending;
}

void DataSortCriterion::setDescending(bool descending)
{
    configure(this, m_descending, descending, &DataSortCriterion::descendingChanged,
              &DataSortCriterion::updateRequired);
}

} // namespace vo::data

#include "moc_datasortcriterion.cpp"
