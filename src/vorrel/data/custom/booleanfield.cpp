// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/custom/booleanfield.h>

#include <vorrel/data/custom/fieldvalue_p.h>

namespace vo::data {

BooleanField::~BooleanField() = default;

QVariant BooleanField::convert(const QVariant &value) const
{
    return value.canConvert<bool>() ? value.toBool() : m_defaultValue;
}

QVariant BooleanField::fromJson(const QJsonValue &value) const
{
    return value.toBool(m_defaultValue);
}

QJsonValue BooleanField::toJson(const QVariant &value) const
{
    const bool isStored = value.canConvert<bool>() && value.toBool() != m_defaultValue;
    return isStored ? QJsonValue(value.toBool()) : QJsonValue::Undefined;
}

bool BooleanField::defaultValue() const
{
    return m_defaultValue;
}

void BooleanField::setDefaultValue(bool value)
{
    if (value != m_defaultValue
        && takeValue(this, m_defaultValue, value, &BooleanField::defaultValueChanged)) {
        requestReevaluation();
    }
}

} // namespace vo::data

#include "moc_booleanfield.cpp"
