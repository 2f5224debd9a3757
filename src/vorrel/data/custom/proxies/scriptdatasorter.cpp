// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/custom/proxies/scriptdatasorter.h>

#include <vorrel/data/custom/proxies/datarows.h>
#include <vorrel/data/custom/proxies/rowkeys_p.h>
#include <vorrel/data/custom/proxies/scriptfunction_p.h>
#include <vorrel/data/models/criterion_p.h>

#include <cmath>

namespace vo::data {

ScriptDataSorter::ScriptDataSorter(QObject *parent)
    : DataSortCriterion(parent)
    , m_compare(new ScriptFunction)
{ }

ScriptDataSorter::~ScriptDataSorter() = default;

bool ScriptDataSorter::skip() const
{
    return !m_compare->isCallable();
}

RowCompare ScriptDataSorter::createCompareFunction(const DataRows &rows) const
{
    return [&rows, role = rows.role(role()), function = ScriptFunction(*m_compare, this),
            arguments = RowKeys<QJSValue>()](int a, int b) mutable {
        const auto read = [&](int row) { return function.argument(rows, row, role); };
        const QJSValue first = arguments.of(rows, a, read);
        const double result = function.call({ first, arguments.of(rows, b, read) }).toNumber();
        return (result > 0) - (result < 0); // neither, if it is no number
    };
}

QJSValue ScriptDataSorter::compare() const
{
    return m_compare->value();
}

void ScriptDataSorter::setCompare(const QJSValue &function)
{
    if (!function.strictlyEquals(m_compare->value())) {
        *m_compare = ScriptFunction(function);
        emitBoth(this, &ScriptDataSorter::compareChanged, &ScriptDataSorter::updateRequired);
    }
}

} // namespace vo::data

#include "moc_scriptdatasorter.cpp"
