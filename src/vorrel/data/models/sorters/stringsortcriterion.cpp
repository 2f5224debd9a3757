// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/models/sorters/stringsortcriterion.h>

#include <vorrel/data/models/sorters/comparefunctors_p.h>

namespace vo::data {

StringSortCriterion::~StringSortCriterion() = default;

CompareFunction StringSortCriterion::createCompareFunction() const
{
    return StringCompareFunctor(descending(), property());
}

} // namespace vo::data

#include "moc_stringsortcriterion.cpp"
