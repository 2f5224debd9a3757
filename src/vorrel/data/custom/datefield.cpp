// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/custom/datefield.h>

#include <QtCore/QDateTime>

namespace vo::data {

namespace {

// QML turns a day into the moment at which it begins in UTC, and hands that back as a local time,
// which west of Greenwich is on the day before.
QDate dayOf(const QVariant &value)
{
    const bool isMoment = value.userType() == QMetaType::QDateTime;
    const QDateTime utc = isMoment ? value.toDateTime().toUTC() : QDateTime();
    return utc.isValid() && utc.time() == QTime(0, 0) ? utc.date() : value.toDate();
}

} // namespace

DateField::~DateField() = default;

QVariant DateField::convert(const QVariant &value) const
{
    return value.canConvert<QDate>() ? QVariant(dayOf(value)) : QVariant();
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
