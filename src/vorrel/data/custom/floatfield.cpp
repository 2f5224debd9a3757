// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/custom/floatfield.h>

#include <vorrel/data/custom/fieldvalue_p.h>

#include <cmath>

namespace vo::data {

namespace {

bool areSame(double a, double b)
{
    return a == b || qFuzzyCompare(a, b); // which does not know the infinite ones
}

} // namespace

FloatField::~FloatField() = default;

bool FloatField::compare(const QVariant &a, const QVariant &b) const
{
    return a.canConvert<double>() && b.canConvert<double>() && areSame(a.toDouble(), b.toDouble());
}

QVariant FloatField::convert(const QVariant &value) const
{
    bool isNumber = false;
    const double number = value.toDouble(&isNumber);
    isNumber = isNumber && !std::isnan(number);
    return bounded(isNumber ? number : m_defaultValue, m_minimum, m_maximum);
}

QVariant FloatField::fromJson(const QJsonValue &value) const
{
    return bounded(value.toDouble(m_defaultValue), m_minimum, m_maximum);
}

// JSON has no infinite numbers.
QJsonValue FloatField::toJson(const QVariant &value) const
{
    const double number = value.toDouble();
    const bool isStored =
        value.canConvert<double>() && std::isfinite(number) && !areSame(number, m_defaultValue);
    return isStored ? QJsonValue(number) : QJsonValue::Undefined;
}

void FloatField::set(double &stored, double value, void (FloatField::*changed)())
{
    if (!areSame(stored, value) && takeValue(this, stored, value, changed)) {
        requestReevaluation();
    }
}

double FloatField::minimum() const
{
    return m_minimum;
}

void FloatField::setMinimum(double value)
{
    set(m_minimum, value, &FloatField::minimumChanged);
}

double FloatField::maximum() const
{
    return m_maximum;
}

void FloatField::setMaximum(double value)
{
    set(m_maximum, value, &FloatField::maximumChanged);
}

double FloatField::defaultValue() const
{
    return m_defaultValue;
}

void FloatField::setDefaultValue(double value)
{
    set(m_defaultValue, value, &FloatField::defaultValueChanged);
}

} // namespace vo::data

#include "moc_floatfield.cpp"
