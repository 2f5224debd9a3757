// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/custom/proxies/datasortcriterion.h>

namespace vo::data {

/// Sorts by a text as the default locale does, with numbers in it by their value: "a10" comes
/// behind "a9".
///
///     StringDataSorter { role: "title" }
class VORREL_DATACORE_EXPORT StringDataSorter : public vo::data::DataSortCriterion
{
    Q_OBJECT
    QML_NAMED_ELEMENT(StringDataSorter)

public:
    using DataSortCriterion::DataSortCriterion;
    ~StringDataSorter() override;

    [[nodiscard]] RowCompare createCompareFunction(const DataRows &rows) const override;
};

} // namespace vo::data
