// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/models/filters/stringfiltercriterion.h>

#include <vorrel/data/core/document.h>
#include <vorrel/data/models/criterion_p.h>
#include <vorrel/data/models/propertyreader_p.h>

#include <QtCore/QStringMatcher>

namespace vo::data {

namespace {

struct StringFilterFunctor
{
    bool operator()(const Document *document)
    {
        return matcher.indexIn(property.readText(document)) >= 0;
    }

    PropertyReader property;
    QStringMatcher matcher;
};

} // namespace

StringFilterCriterion::~StringFilterCriterion() = default;

bool StringFilterCriterion::skip() const
{
    return PropertyFilterCriterion::skip() || m_contains.isEmpty();
}

FilterFunction StringFilterCriterion::createFilterFunction() const
{
    const auto sensitivity = m_caseSensitive ? Qt::CaseSensitive : Qt::CaseInsensitive;
    return StringFilterFunctor { PropertyReader(property()),
                                 QStringMatcher(m_contains, sensitivity) };
}

bool StringFilterCriterion::caseSensitive() const
{
    return m_caseSensitive;
}

void StringFilterCriterion::setCaseSensitive(bool caseSensitive)
{
    configure(this, m_caseSensitive, caseSensitive, &StringFilterCriterion::caseSensitiveChanged,
              &StringFilterCriterion::updateRequired);
}

QString StringFilterCriterion::contains() const
{
    return m_contains;
}

void StringFilterCriterion::setContains(const QString &text)
{
    configure(this, m_contains, text, &StringFilterCriterion::containsChanged,
              &StringFilterCriterion::updateRequired);
}

} // namespace vo::data

#include "moc_stringfiltercriterion.cpp"
