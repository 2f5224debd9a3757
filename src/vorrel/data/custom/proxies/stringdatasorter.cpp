// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/custom/proxies/stringdatasorter.h>

#include <vorrel/data/custom/proxies/rowkeys_p.h>
#include <vorrel/data/models/sorters/textorder_p.h>

namespace vo::data {

StringDataSorter::~StringDataSorter() = default;

RowCompare StringDataSorter::createCompareFunction(const DataRows &rows) const
{
    return [&rows, role = rows.role(role()), order = TextOrder(),
            keys = RowKeys<TextOrder::Key>()](int a, int b) mutable {
        const auto read = [&](int row) { return order.key(rows.value(row, role).toString()); };
        const TextOrder::Key first = keys.of(rows, a, read);
        return order.compare(first, keys.of(rows, b, read));
    };
}

} // namespace vo::data

#include "moc_stringdatasorter.cpp"
