// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/custom/proxies/datasortcriterion.h>

namespace vo::data {

/// Sorts by a day or a point in time, the earlier one first. What is none comes before all.
///
///     DateDataSorter { role: "validFrom"; descending: true }
class VORREL_DATACORE_EXPORT DateDataSorter : public vo::data::DataSortCriterion
{
    Q_OBJECT
    QML_NAMED_ELEMENT(DateDataSorter)

public:
    using DataSortCriterion::DataSortCriterion;
    ~DateDataSorter() override;

    [[nodiscard]] RowCompare createCompareFunction(const DataRows &rows) const override;
};

} // namespace vo::data
