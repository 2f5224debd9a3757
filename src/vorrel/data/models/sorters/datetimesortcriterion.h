// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/models/sorters/propertysortcriterion.h>

namespace vo::data {

/// Sorts by a point in time, the earlier one first:
///
///     DateTimeSortCriterion { property: "edited"; descending: true }
class VORREL_DATACORE_EXPORT DateTimeSortCriterion : public vo::data::PropertySortCriterion
{
    Q_OBJECT
    QML_NAMED_ELEMENT(DateTimeSortCriterion)

public:
    using PropertySortCriterion::PropertySortCriterion;
    ~DateTimeSortCriterion() override;

    [[nodiscard]] CompareFunction createCompareFunction() const override;
};

} // namespace vo::data
