// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/models/filters/integerfiltercriterion.h>

#include <vorrel/data/core/document.h>
#include <vorrel/data/models/criterion_p.h>
#include <vorrel/data/models/propertyreader_p.h>

namespace vo::data {

namespace {

using Comparison = std::function<bool(int, int)>;

struct IntegerFilterFunctor
{
    bool operator()(const Document *document)
    {
        return comparison(property.read(document).toInt(), expected);
    }

    PropertyReader property;
    int expected;
    Comparison comparison;
};

Comparison comparisonFor(IntegerFilterCriterion::MatchMode mode)
{
    switch (mode) {
    case IntegerFilterCriterion::Equal:
        return std::equal_to<>();
    case IntegerFilterCriterion::NotEqual:
        return std::not_equal_to<>();
    case IntegerFilterCriterion::Greater:
        return std::greater<>();
    case IntegerFilterCriterion::Lesser:
        return std::less<>();
    case IntegerFilterCriterion::GreaterEqual:
        return std::greater_equal<>();
    case IntegerFilterCriterion::LesserEqual:
        return std::less_equal<>();
    }
    return {};
}

} // namespace

IntegerFilterCriterion::~IntegerFilterCriterion() = default;

FilterFunction IntegerFilterCriterion::createFilterFunction() const
{
    return IntegerFilterFunctor { PropertyReader(property()), m_value, comparisonFor(m_matchMode) };
}

IntegerFilterCriterion::MatchMode IntegerFilterCriterion::matchMode() const
{
    return m_matchMode;
}

void IntegerFilterCriterion::setMatchMode(MatchMode mode)
{
    configure(this, m_matchMode, mode, &IntegerFilterCriterion::matchModeChanged,
              &IntegerFilterCriterion::updateRequired);
}

int IntegerFilterCriterion::value() const
{
    return m_value;
}

void IntegerFilterCriterion::setValue(int value)
{
    configure(this, m_value, value, &IntegerFilterCriterion::valueChanged,
              &IntegerFilterCriterion::updateRequired);
}

} // namespace vo::data

#include "moc_integerfiltercriterion.cpp"
