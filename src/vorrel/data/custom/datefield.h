// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/custom/valuedatafield.h>

namespace vo::data {

/// A day, stored as "yyyy-MM-dd":
///
///     DateField { name: "validFrom" }
///
/// QML reads a day as the Date at which it begins in UTC. A Date that it writes is a day of the
/// local calendar, unless a day begins in UTC at that moment.
///
/// There is no default. A member that is not stored reads as an invalid date, and an invalid date
/// is stored as an empty text.
class VORREL_DATACORE_EXPORT DateField : public vo::data::ValueDataField
{
    Q_OBJECT
    QML_NAMED_ELEMENT(DateField)

public:
    using ValueDataField::ValueDataField;
    ~DateField() override;

    [[nodiscard]] QVariant convert(const QVariant &value) const override;
    [[nodiscard]] QVariant fromJson(const QJsonValue &value) const override;
    [[nodiscard]] QJsonValue toJson(const QVariant &value) const override;
};

} // namespace vo::data
