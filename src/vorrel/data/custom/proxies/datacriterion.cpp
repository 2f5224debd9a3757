// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/custom/proxies/datacriterion.h>

#include <vorrel/data/models/criterion_p.h>

namespace vo::data {

DataCriterion::DataCriterion(QObject *parent)
    : QObject(parent)
{ }

DataCriterion::~DataCriterion() = default;

bool DataCriterion::skip() const
{
    return m_role.isEmpty();
}

bool DataCriterion::enabled() const
{
    return m_enabled;
}

void DataCriterion::setEnabled(bool enabled)
{
    configure(this, m_enabled, enabled, &DataCriterion::enabledChanged,
              &DataCriterion::updateRequired);
}

QString DataCriterion::role() const
{
    return m_role;
}

void DataCriterion::setRole(const QString &name)
{
    configure(this, m_role, name, &DataCriterion::roleChanged, &DataCriterion::updateRequired);
}

} // namespace vo::data

#include "moc_datacriterion.cpp"
