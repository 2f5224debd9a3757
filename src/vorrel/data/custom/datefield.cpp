// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/custom/datefield.h>

#include <QtCore/QDate>

namespace vo::data {

DateField::~DateField() = default;

QVariant DateField::convert(const QVariant &value) const
{
    return value.canConvert<QDate>() ? QVariant(value.toDate()) : QVariant();
}

QVariant DateField::fromJson(const QJsonValue &value) const
{
    return QDate::fromString(value.toString(), Qt::ISODate);
}

QJsonValue DateField::toJson(const QVariant &value) const
{
    return value.canConvert<QDate>() ? QJsonValue(value.toDate().toString(Qt::ISODate))
                                     : QJsonValue::Undefined;
}

} // namespace vo::data

#include "moc_datefield.cpp"
