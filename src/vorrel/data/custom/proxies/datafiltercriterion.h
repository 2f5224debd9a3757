// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/custom/proxies/datacriterion.h>

#include <functional>

namespace vo::data {

class DataRows;

/// Answers one question about a row of the source.
using RowFilter = std::function<bool(int row)>;

/// One condition of a DataFilterModel. A class of an application derives from it and writes
/// createFilterFunction().
class VORREL_DATACORE_EXPORT DataFilterCriterion : public vo::data::DataCriterion
{
    Q_OBJECT
    QML_NAMED_ELEMENT(DataFilterCriterion)
    QML_UNCREATABLE("Use one of the kinds of criterion")
    Q_PROPERTY(bool inverted READ inverted WRITE setInverted NOTIFY invertedChanged)

public:
    using DataCriterion::DataCriterion;
    ~DataFilterCriterion() override;

    /// A function with a copy of the configuration. It reads \p rows, which outlives it, and
    /// changes nothing.
    [[nodiscard]] virtual RowFilter createFilterFunction(const DataRows &rows) const = 0;

    /// Whether rows pass for which the answer is no. False at first.
    [[nodiscard]] bool inverted() const;
    void setInverted(bool inverted);

Q_SIGNALS:
    void invertedChanged();

private:
    bool m_inverted = false;
};

} // namespace vo::data
