// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/models/sorters/datetimesortcriterion.h>

#include <vorrel/data/models/sorters/comparefunctors_p.h>

namespace vo::data {

DateTimeSortCriterion::~DateTimeSortCriterion() = default;

CompareFunction DateTimeSortCriterion::createCompareFunction() const
{
    return DateTimeCompareFunctor(descending(), property());
}

} // namespace vo::data

#include "moc_datetimesortcriterion.cpp"
