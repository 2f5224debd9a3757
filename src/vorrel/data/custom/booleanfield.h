// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/custom/valuedatafield.h>

namespace vo::data {

/// A member that is true or false:
///
///     BooleanField { name: "visible"; defaultValue: true }
class VORREL_DATACORE_EXPORT BooleanField : public vo::data::ValueDataField
{
    Q_OBJECT
    QML_NAMED_ELEMENT(BooleanField)
    Q_PROPERTY(bool defaultValue READ defaultValue WRITE setDefaultValue NOTIFY defaultValueChanged)

public:
    using ValueDataField::ValueDataField;
    ~BooleanField() override;

    [[nodiscard]] QVariant convert(const QVariant &value) const override;
    [[nodiscard]] QVariant fromJson(const QJsonValue &value) const override;
    [[nodiscard]] QJsonValue toJson(const QVariant &value) const override;

    /// False at first.
    [[nodiscard]] bool defaultValue() const;
    void setDefaultValue(bool value);

Q_SIGNALS:
    void defaultValueChanged();

private:
    bool m_defaultValue = false;
};

} // namespace vo::data
