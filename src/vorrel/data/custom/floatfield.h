// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/custom/valuedatafield.h>

#include <limits>

namespace vo::data {

/// A number:
///
///     FloatField { name: "price"; minimum: 0 }
///
/// What is stored reads as bounded; the default too. Numbers that agree in about twelve digits are
/// the same, and what is not a number counts as the default.
class VORREL_DATACORE_EXPORT FloatField : public vo::data::ValueDataField
{
    Q_OBJECT
    QML_NAMED_ELEMENT(FloatField)
    Q_PROPERTY(double minimum READ minimum WRITE setMinimum NOTIFY minimumChanged)
    Q_PROPERTY(double maximum READ maximum WRITE setMaximum NOTIFY maximumChanged)
    Q_PROPERTY(
        double defaultValue READ defaultValue WRITE setDefaultValue NOTIFY defaultValueChanged)

public:
    using ValueDataField::ValueDataField;
    ~FloatField() override;

    /// True if both are numbers, and the same.
    [[nodiscard]] bool compare(const QVariant &a, const QVariant &b) const override;
    [[nodiscard]] QVariant convert(const QVariant &value) const override;
    [[nodiscard]] QVariant fromJson(const QJsonValue &value) const override;
    [[nodiscard]] QJsonValue toJson(const QVariant &value) const override;

    /// The bounds may stand the wrong way round. At first they are those of the type.
    [[nodiscard]] double minimum() const;
    void setMinimum(double value);
    [[nodiscard]] double maximum() const;
    void setMaximum(double value);

    /// 0.0 at first.
    [[nodiscard]] double defaultValue() const;
    void setDefaultValue(double value);

Q_SIGNALS:
    void minimumChanged();
    void maximumChanged();
    void defaultValueChanged();

private:
    void set(double &stored, double value, void (FloatField::*changed)());

    double m_minimum = std::numeric_limits<double>::lowest();
    double m_maximum = std::numeric_limits<double>::max();
    double m_defaultValue = 0.0;
};

} // namespace vo::data
