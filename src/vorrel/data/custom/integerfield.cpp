// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/custom/integerfield.h>

#include <vorrel/data/custom/fieldvalue_p.h>

#include <cmath>

namespace vo::data {

namespace {

/// Like QVariant::toInt(), which gives anything for numbers that are none of int.
int toInt(const QVariant &value, bool *isNumber)
{
    const int type = value.userType();
    if (type != QMetaType::Double && type != QMetaType::Float && type != QMetaType::LongLong
        && type != QMetaType::ULongLong && type != QMetaType::UInt) {
        return value.toInt(isNumber);
    }
    using Limits = std::numeric_limits<int>;
    const double number = value.toDouble();
    *isNumber = !std::isnan(number);
    if (number <= Limits::min()) {
        return Limits::min();
    }
    return number >= Limits::max() ? Limits::max() : *isNumber ? value.toInt() : 0;
}

} // namespace

IntegerField::~IntegerField() = default;

QVariant IntegerField::convert(const QVariant &value) const
{
    bool isNumber = false;
    const int number = toInt(value, &isNumber);
    return bounded(isNumber ? number : m_defaultValue, m_minimum, m_maximum);
}

QVariant IntegerField::fromJson(const QJsonValue &value) const
{
    return bounded(value.toInt(m_defaultValue), m_minimum, m_maximum);
}

QJsonValue IntegerField::toJson(const QVariant &value) const
{
    bool isNumber = false;
    const int number = toInt(value, &isNumber);
    const bool isStored = value.canConvert<int>() && number != m_defaultValue;
    return isStored ? QJsonValue(number) : QJsonValue::Undefined;
}

void IntegerField::set(int &stored, int value, void (IntegerField::*changed)())
{
    if (value != stored && takeValue(this, stored, value, changed)) {
        requestReevaluation();
    }
}

int IntegerField::minimum() const
{
    return m_minimum;
}

void IntegerField::setMinimum(int value)
{
    set(m_minimum, value, &IntegerField::minimumChanged);
}

int IntegerField::maximum() const
{
    return m_maximum;
}

void IntegerField::setMaximum(int value)
{
    set(m_maximum, value, &IntegerField::maximumChanged);
}

int IntegerField::defaultValue() const
{
    return m_defaultValue;
}

void IntegerField::setDefaultValue(int value)
{
    set(m_defaultValue, value, &IntegerField::defaultValueChanged);
}

} // namespace vo::data

#include "moc_integerfield.cpp"
