// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/custom/proxies/stringdatafilter.h>

#include <vorrel/data/custom/proxies/datarows.h>
#include <vorrel/data/models/criterion_p.h>

#include <QtCore/QStringMatcher>

namespace vo::data {

StringDataFilter::~StringDataFilter() = default;

bool StringDataFilter::skip() const
{
    return DataFilterCriterion::skip() || m_contains.isEmpty();
}

RowFilter StringDataFilter::createFilterFunction(const DataRows &rows) const
{
    const auto sensitivity = m_caseSensitive ? Qt::CaseSensitive : Qt::CaseInsensitive;
    return [&rows, role = rows.role(role()), matcher = QStringMatcher(m_contains, sensitivity)](
               int row) { return matcher.indexIn(rows.value(row, role).toString()) >= 0; };
}

bool StringDataFilter::caseSensitive() const
{
    return m_caseSensitive;
}

void StringDataFilter::setCaseSensitive(bool caseSensitive)
{
    configure(this, m_caseSensitive, caseSensitive, &StringDataFilter::caseSensitiveChanged,
              &StringDataFilter::updateRequired);
}

QString StringDataFilter::contains() const
{
    return m_contains;
}

void StringDataFilter::setContains(const QString &text)
{
    configure(this, m_contains, text, &StringDataFilter::containsChanged,
              &StringDataFilter::updateRequired);
}

} // namespace vo::data

#include "moc_stringdatafilter.cpp"
