// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/models/filters/booleanfiltercriterion.h>

#include <vorrel/data/core/document.h>
#include <vorrel/data/models/criterion_p.h>
#include <vorrel/data/models/propertyreader_p.h>

namespace vo::data {

namespace {

struct BooleanFilterFunctor
{
    bool operator()(const Document *document)
    {
        return property.read(document).toBool() == expected;
    }

    PropertyReader property;
    bool expected;
};

} // namespace

BooleanFilterCriterion::~BooleanFilterCriterion() = default;

FilterFunction BooleanFilterCriterion::createFilterFunction() const
{
    return BooleanFilterFunctor { PropertyReader(property()), m_value };
}

bool BooleanFilterCriterion::value() const
{
    return m_value;
}

void BooleanFilterCriterion::setValue(bool value)
{
    configure(this, m_value, value, &BooleanFilterCriterion::valueChanged,
              &BooleanFilterCriterion::updateRequired);
}

} // namespace vo::data

#include "moc_booleanfiltercriterion.cpp"
