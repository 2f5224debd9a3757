// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/custom/valuedatafield.h>

#include <limits>

namespace vo::data {

/// A whole number:
///
///     IntegerField { name: "columns"; minimum: 1; maximum: 12; defaultValue: 3 }
///
/// What is stored reads as bounded; the default too. Numbers beyond 32 bits count as the first or
/// the last of them.
class VORREL_DATACORE_EXPORT IntegerField : public vo::data::ValueDataField
{
    Q_OBJECT
    QML_NAMED_ELEMENT(IntegerField)
    Q_PROPERTY(int minimum READ minimum WRITE setMinimum NOTIFY minimumChanged)
    Q_PROPERTY(int maximum READ maximum WRITE setMaximum NOTIFY maximumChanged)
    Q_PROPERTY(int defaultValue READ defaultValue WRITE setDefaultValue NOTIFY defaultValueChanged)

public:
    using ValueDataField::ValueDataField;
    ~IntegerField() override;

    [[nodiscard]] QVariant convert(const QVariant &value) const override;
    [[nodiscard]] QVariant fromJson(const QJsonValue &value) const override;
    [[nodiscard]] QJsonValue toJson(const QVariant &value) const override;

    /// The bounds may stand the wrong way round. At first they are those of the type.
    [[nodiscard]] int minimum() const;
    void setMinimum(int value);
    [[nodiscard]] int maximum() const;
    void setMaximum(int value);

    /// 0 at first.
    [[nodiscard]] int defaultValue() const;
    void setDefaultValue(int value);

Q_SIGNALS:
    void minimumChanged();
    void maximumChanged();
    void defaultValueChanged();

private:
    void set(int &stored, int value, void (IntegerField::*changed)());

    int m_minimum = std::numeric_limits<int>::min();
    int m_maximum = std::numeric_limits<int>::max();
    int m_defaultValue = 0;
};

} // namespace vo::data
