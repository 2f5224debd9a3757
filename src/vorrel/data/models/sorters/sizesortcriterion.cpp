// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/models/sorters/sizesortcriterion.h>

#include <vorrel/data/models/sorters/comparefunctors_p.h>

namespace vo::data {

SizeSortCriterion::~SizeSortCriterion() = default;

CompareFunction SizeSortCriterion::createCompareFunction() const
{
    return SizeCompareFunctor(descending(), property());
}

} // namespace vo::data

#include "moc_sizesortcriterion.cpp"
