// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/custom/colorfield.h>

#include <vorrel/data/custom/fieldvalue_p.h>

namespace vo::data {

namespace {

QColor colorOr(const QColor &other, const QString &name)
{
    const QColor color(name);
    return color.isValid() ? color : other;
}

} // namespace

ColorField::~ColorField() = default;

QVariant ColorField::convert(const QVariant &value) const
{
    switch (value.userType()) {
    case QMetaType::QColor:
        return value;
    case QMetaType::QString:
        return colorOr(m_defaultValue, value.toString());
    default:
        return m_defaultValue;
    }
}

QVariant ColorField::fromJson(const QJsonValue &value) const
{
    return colorOr(m_defaultValue, value.toString());
}

QJsonValue ColorField::toJson(const QVariant &value) const
{
    const bool isColor = value.userType() == QMetaType::QColor;
    const auto color = isColor ? value.value<QColor>() : m_defaultValue;
    return color != m_defaultValue ? QJsonValue(color.name()) : QJsonValue::Undefined;
}

QColor ColorField::defaultValue() const
{
    return m_defaultValue;
}

void ColorField::setDefaultValue(const QColor &value)
{
    if (value != m_defaultValue
        && takeValue(this, m_defaultValue, value, &ColorField::defaultValueChanged)) {
        requestReevaluation();
    }
}

} // namespace vo::data

#include "moc_colorfield.cpp"
