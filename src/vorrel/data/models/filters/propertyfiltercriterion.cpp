// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/models/filters/propertyfiltercriterion.h>

#include <vorrel/data/models/criterion_p.h>

namespace vo::data {

PropertyFilterCriterion::~PropertyFilterCriterion() = default;

bool PropertyFilterCriterion::skip() const
{
    return m_property.isEmpty();
}

QString PropertyFilterCriterion::property() const
{
    return m_property;
}

void PropertyFilterCriterion::setProperty(const QString &name)
{
    configure(this, m_property, name, &PropertyFilterCriterion::propertyChanged,
              &PropertyFilterCriterion::updateRequired);
}

} // namespace vo::data

#include "moc_propertyfiltercriterion.cpp"
