// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/custom/proxies/datedatasorter.h>

#include <vorrel/data/custom/proxies/rowkeys_p.h>

#include <QtCore/QDateTime>

#include <limits>

namespace vo::data {

DateDataSorter::~DateDataSorter() = default;

RowCompare DateDataSorter::createCompareFunction(const DataRows &rows) const
{
    return [&rows, role = rows.role(role()), keys = RowKeys<qint64>()](int a, int b) mutable {
        const auto read = [&](int row) {
            const QDateTime time = rows.value(row, role).toDateTime();
            return time.isValid() ? time.toMSecsSinceEpoch() : std::numeric_limits<qint64>::min();
        };
        const qint64 first = keys.of(rows, a, read);
        const qint64 second = keys.of(rows, b, read);
        return (first > second) - (first < second);
    };
}

} // namespace vo::data

#include "moc_datedatasorter.cpp"
