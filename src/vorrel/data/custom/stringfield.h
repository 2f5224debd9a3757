// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/custom/valuedatafield.h>

#include <QtCore/QString>

namespace vo::data {

/// A text:
///
///     StringField { name: "title"; defaultValue: "Untitled" }
class VORREL_DATACORE_EXPORT StringField : public vo::data::ValueDataField
{
    Q_OBJECT
    QML_NAMED_ELEMENT(StringField)
    Q_PROPERTY(
        QString defaultValue READ defaultValue WRITE setDefaultValue NOTIFY defaultValueChanged)

public:
    using ValueDataField::ValueDataField;
    ~StringField() override;

    [[nodiscard]] QVariant convert(const QVariant &value) const override;
    [[nodiscard]] QVariant fromJson(const QJsonValue &value) const override;
    [[nodiscard]] QJsonValue toJson(const QVariant &value) const override;

    /// Empty at first.
    [[nodiscard]] QString defaultValue() const;
    void setDefaultValue(const QString &value);

Q_SIGNALS:
    void defaultValueChanged();

private:
    QString m_defaultValue;
};

} // namespace vo::data
