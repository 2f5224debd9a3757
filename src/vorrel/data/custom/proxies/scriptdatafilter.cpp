// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/custom/proxies/scriptdatafilter.h>

#include <vorrel/data/custom/proxies/datarows.h>
#include <vorrel/data/custom/proxies/scriptfunction_p.h>
#include <vorrel/data/models/criterion_p.h>

namespace vo::data {

ScriptDataFilter::ScriptDataFilter(QObject *parent)
    : DataFilterCriterion(parent)
    , m_accepts(new ScriptFunction)
{ }

ScriptDataFilter::~ScriptDataFilter() = default;

bool ScriptDataFilter::skip() const
{
    return !m_accepts->isCallable();
}

RowFilter ScriptDataFilter::createFilterFunction(const DataRows &rows) const
{
    return [&rows, role = rows.role(role()),
            function = ScriptFunction(*m_accepts, this)](int row) mutable {
        return function.call({ function.argument(rows, row, role) }).toBool();
    };
}

QJSValue ScriptDataFilter::accepts() const
{
    return m_accepts->value();
}

void ScriptDataFilter::setAccepts(const QJSValue &function)
{
    if (!function.strictlyEquals(m_accepts->value())) {
        *m_accepts = ScriptFunction(function);
        emitBoth(this, &ScriptDataFilter::acceptsChanged, &ScriptDataFilter::updateRequired);
    }
}

} // namespace vo::data

#include "moc_scriptdatafilter.cpp"
