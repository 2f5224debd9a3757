// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/custom/proxies/datafiltercriterion.h>

#include <QtQml/QJSValue>

#include <memory>

namespace vo::data {

class ScriptFunction;

/// Passes rows for which a function says so:
///
///     ScriptDataFilter { accepts: row => row.price > 3 && row.title !== "" }
///
/// The function only reads. With a `role` it gets the value of that role instead of the row, which
/// is faster. It is called again when a row changes or when it is another function, so let it be a
/// binding if it looks at something else:
///
///     accepts: {
///         const limit = slider.value
///         return row => row.price > limit
///     }
///
/// An error in it is logged once, as a warning in "vorrel.data.custom"; such a row does not match.
/// Without a function this is left out. It belongs to a QML engine.
class VORREL_DATACORE_EXPORT ScriptDataFilter : public vo::data::DataFilterCriterion
{
    Q_OBJECT
    QML_NAMED_ELEMENT(ScriptDataFilter)
    Q_PROPERTY(QJSValue accepts READ accepts WRITE setAccepts NOTIFY acceptsChanged)

public:
    explicit ScriptDataFilter(QObject *parent = nullptr);
    ~ScriptDataFilter() override;

    [[nodiscard]] bool skip() const override;
    [[nodiscard]] RowFilter createFilterFunction(const DataRows &rows) const override;

    /// Undefined at first.
    [[nodiscard]] QJSValue accepts() const;
    void setAccepts(const QJSValue &function);

Q_SIGNALS:
    void acceptsChanged();

private:
    const std::unique_ptr<ScriptFunction> m_accepts;
};

} // namespace vo::data
