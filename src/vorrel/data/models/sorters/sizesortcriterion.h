// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/models/sorters/propertysortcriterion.h>

namespace vo::data {

/// Sorts by the area of a size, the smaller one first:
///
///     SizeSortCriterion { property: "size" }
class VORREL_DATACORE_EXPORT SizeSortCriterion : public vo::data::PropertySortCriterion
{
    Q_OBJECT
    QML_NAMED_ELEMENT(SizeSortCriterion)

public:
    using PropertySortCriterion::PropertySortCriterion;
    ~SizeSortCriterion() override;

    [[nodiscard]] CompareFunction createCompareFunction() const override;
};

} // namespace vo::data
