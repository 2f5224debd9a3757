// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/models/sorters/typesortcriterion.h>

#include <vorrel/data/models/criterion_p.h>
#include <vorrel/data/models/sorters/comparefunctors_p.h>

namespace vo::data {

TypeSortCriterion::~TypeSortCriterion() = default;

CompareFunction TypeSortCriterion::createCompareFunction() const
{
    if (m_typeOrder.isEmpty()) {
        return SimpleTypeCompareFunctor(descending());
    }
    return TypeOrderCompareFunctor(descending(), m_typeOrder);
}

QStringList TypeSortCriterion::typeOrder() const
{
    return m_typeOrder;
}

void TypeSortCriterion::setTypeOrder(const QStringList &types)
{
    configure(this, m_typeOrder, types, &TypeSortCriterion::typeOrderChanged,
              &TypeSortCriterion::updateRequired);
}

} // namespace vo::data

#include "moc_typesortcriterion.cpp"
