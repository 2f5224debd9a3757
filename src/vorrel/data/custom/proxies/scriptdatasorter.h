// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/custom/proxies/datasortcriterion.h>

#include <QtQml/QJSValue>

#include <memory>

namespace vo::data {

class ScriptFunction;

/// Sorts by a function that gives a number, like those of Array.sort():
///
///     ScriptDataSorter { role: "price"; compare: (a, b) => a - b }
///
/// The function only reads. With a `role` it gets the value of that role instead of the row, which
/// is faster. It is called again when a row changes or when it is another function, so let it be a
/// binding if it looks at something else:
///
///     compare: {
///         const limit = slider.value
///         return (a, b) => (a.price > limit) - (b.price > limit)
///     }
///
/// An error in it is logged once, as a warning in "vorrel.data.custom"; such rows count as equal.
/// Without a function this is left out. It belongs to a QML engine.
class VORREL_DATACORE_EXPORT ScriptDataSorter : public vo::data::DataSortCriterion
{
    Q_OBJECT
    QML_NAMED_ELEMENT(ScriptDataSorter)
    Q_PROPERTY(QJSValue compare READ compare WRITE setCompare NOTIFY compareChanged)

public:
    explicit ScriptDataSorter(QObject *parent = nullptr);
    ~ScriptDataSorter() override;

    [[nodiscard]] bool skip() const override;
    [[nodiscard]] RowCompare createCompareFunction(const DataRows &rows) const override;

    /// Undefined at first.
    [[nodiscard]] QJSValue compare() const;
    void setCompare(const QJSValue &function);

Q_SIGNALS:
    void compareChanged();

private:
    const std::unique_ptr<ScriptFunction> m_compare;
};

} // namespace vo::data
