// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/changefeed/changerecord_p.h>

#include <vorrel/data/base/jsonkeys_p.h>

#include <QtCore/QJsonArray>
#include <QtCore/QVariant>

#include <cmath>

namespace vo::data {

ChangeRecord ChangeRecord::fromFeed(const QJsonObject &record)
{
    const QJsonArray changes = record.value(jsonkeys::changes).toArray();
    const QJsonObject newest = changes.isEmpty() ? QJsonObject() : changes.last().toObject();
    return { sequenceText(record.value(jsonkeys::sequence)),
             record.value(jsonkeys::recordId).toString(), newest.value(jsonkeys::rev).toString(),
             record.value(jsonkeys::deleted).toBool(), true };
}

ChangeRecord ChangeRecord::fromRow(const QJsonObject &row)
{
    if (row.contains(jsonkeys::error)) {
        return {};
    }
    const QJsonObject value = row.value(jsonkeys::value).toObject();
    return { {},
             row.value(jsonkeys::recordId).toString(),
             value.value(jsonkeys::rev).toString(),
             value.value(jsonkeys::deleted).toBool(),
             false };
}

QString ChangeRecord::sequenceText(const QJsonValue &value)
{
    if (!value.isDouble()) {
        return value.toString().trimmed();
    }
    // As a variant a whole number keeps digits that a double has no room for.
    const QVariant number = value.toVariant();
    if (number.userType() == QMetaType::LongLong) {
        return QString::number(number.toLongLong());
    }
    constexpr double limit = 9223372036854775808.0; // 2^63
    const double rounded = std::trunc(number.toDouble());
    return std::abs(rounded) < limit ? QString::number(qint64(rounded)) : QString();
}

bool ChangeRecord::isFirstRevision() const
{
    return revision.startsWith(QLatin1String("1-"));
}

} // namespace vo::data
