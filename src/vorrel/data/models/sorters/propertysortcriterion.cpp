// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/models/sorters/propertysortcriterion.h>

#include <vorrel/data/models/criterion_p.h>

namespace vo::data {

PropertySortCriterion::~PropertySortCriterion() = default;

QString PropertySortCriterion::property() const
{
    return m_property;
}

void PropertySortCriterion::setProperty(const QString &name)
{
    configure(this, m_property, name, &PropertySortCriterion::propertyChanged,
              &PropertySortCriterion::updateRequired);
}

} // namespace vo::data

#include "moc_propertysortcriterion.cpp"
