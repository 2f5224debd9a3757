// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/custom/proxies/datacriterion.h>

#include <functional>

namespace vo::data {

class DataRows;

/// Below 0 if row a of the source comes before row b, above 0 if behind it, and 0 if this says
/// nothing about them.
using RowCompare = std::function<int(int a, int b)>;

/// One rule of the order of a DataSortModel; those behind it decide where it says nothing. A class
/// of an application derives from it and writes createCompareFunction().
class VORREL_DATACORE_EXPORT DataSortCriterion : public vo::data::DataCriterion
{
    Q_OBJECT
    QML_NAMED_ELEMENT(DataSortCriterion)
    QML_UNCREATABLE("Use one of the kinds of criterion")
    Q_PROPERTY(bool descending READ descending WRITE setDescending NOTIFY descendingChanged)

public:
    using DataCriterion::DataCriterion;
    ~DataSortCriterion() override;

    /// A function with a copy of the configuration. It reads \p rows, which outlives it, and
    /// changes nothing.
    [[nodiscard]] virtual RowCompare createCompareFunction(const DataRows &rows) const = 0;

    /// Whether the order is the other way round. False at first.
    [[nodiscard]] bool descending() const;
    void setDescending(bool descending);

Q_SIGNALS:
    void descendingChanged();

private:
    bool m_descending = false;
};

} // namespace vo::data
