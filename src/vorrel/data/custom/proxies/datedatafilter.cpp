// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/custom/proxies/datedatafilter.h>

#include <vorrel/data/custom/proxies/datarows.h>
#include <vorrel/data/models/criterion_p.h>

namespace vo::data {

DateDataFilter::~DateDataFilter() = default;

bool DateDataFilter::skip() const
{
    return DataFilterCriterion::skip() || (!m_from.isValid() && !m_to.isValid());
}

RowFilter DateDataFilter::createFilterFunction(const DataRows &rows) const
{
    return [&rows, role = rows.role(role()), from = m_from, to = m_to](int row) {
        const QDate date = rows.value(row, role).toDate();
        return date.isValid() && (!from.isValid() || date >= from) && (!to.isValid() || date <= to);
    };
}

QDate DateDataFilter::from() const
{
    return m_from;
}

void DateDataFilter::setFrom(QDate date)
{
    configure(this, m_from, date, &DateDataFilter::fromChanged, &DateDataFilter::updateRequired);
}

void DateDataFilter::resetFrom()
{
    setFrom({});
}

QDate DateDataFilter::to() const
{
    return m_to;
}

void DateDataFilter::setTo(QDate date)
{
    configure(this, m_to, date, &DateDataFilter::toChanged, &DateDataFilter::updateRequired);
}

void DateDataFilter::resetTo()
{
    setTo({});
}

} // namespace vo::data

#include "moc_datedatafilter.cpp"
