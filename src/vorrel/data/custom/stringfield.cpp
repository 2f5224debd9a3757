// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/custom/stringfield.h>

#include <vorrel/data/custom/fieldvalue_p.h>

namespace vo::data {

StringField::~StringField() = default;

QVariant StringField::convert(const QVariant &value) const
{
    return value.toString();
}

QVariant StringField::fromJson(const QJsonValue &value) const
{
    return value.toString(m_defaultValue);
}

QJsonValue StringField::toJson(const QVariant &value) const
{
    const bool isStored = value.canConvert<QString>() && value.toString() != m_defaultValue;
    return isStored ? QJsonValue(value.toString()) : QJsonValue::Undefined;
}

QString StringField::defaultValue() const
{
    return m_defaultValue;
}

void StringField::setDefaultValue(const QString &value)
{
    if (value != m_defaultValue
        && takeValue(this, m_defaultValue, value, &StringField::defaultValueChanged)) {
        requestReevaluation();
    }
}

} // namespace vo::data

#include "moc_stringfield.cpp"
