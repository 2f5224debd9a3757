// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/custom/valuedatafield.h>

#include <QtGui/QColor>

namespace vo::data {

/// A colour, stored as "#rrggbb": what is transparent in it is not kept.
///
///     ColorField { name: "background"; defaultValue: "ivory" }
class VORREL_DATACORE_EXPORT ColorField : public vo::data::ValueDataField
{
    Q_OBJECT
    QML_NAMED_ELEMENT(ColorField)
    Q_PROPERTY(
        QColor defaultValue READ defaultValue WRITE setDefaultValue NOTIFY defaultValueChanged)

public:
    using ValueDataField::ValueDataField;
    ~ColorField() override;

    [[nodiscard]] QVariant convert(const QVariant &value) const override;
    [[nodiscard]] QVariant fromJson(const QJsonValue &value) const override;
    [[nodiscard]] QJsonValue toJson(const QVariant &value) const override;

    /// White at first.
    [[nodiscard]] QColor defaultValue() const;
    void setDefaultValue(const QColor &value);

Q_SIGNALS:
    void defaultValueChanged();

private:
    QColor m_defaultValue = Qt::white;
};

} // namespace vo::data
