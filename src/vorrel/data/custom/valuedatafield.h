// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/custom/datafield.h>

#include <QtCore/QJsonValue>

namespace vo::data {

/// A member that is stored as one plain JSON value. A value that equals the default is not stored:
/// the struct holds only what differs from it, and so what is not stored follows the default.
class VORREL_DATACORE_EXPORT ValueDataField : public vo::data::DataField
{
    Q_OBJECT
    QML_NAMED_ELEMENT(ValueDataField)
    QML_UNCREATABLE("Use one of the kinds of field")

public:
    using DataField::DataField;
    ~ValueDataField() override;

    /// True for equal values of one type.
    [[nodiscard]] bool compare(const QVariant &a, const QVariant &b) const override;

    /// Invalid without a document.
    [[nodiscard]] QVariant read(vo::data::LinkedDocument *document,
                                const QString &structId) const override;
    void write(vo::data::LinkedDocument *document, const QString &structId,
               const QVariant &value) override;

    /// What a stored value reads as; the undefined value stands for a member that is not stored.
    [[nodiscard]] virtual QVariant fromJson(const QJsonValue &value) const = 0;

    /// What is stored of a value. The undefined value removes the member.
    [[nodiscard]] virtual QJsonValue toJson(const QVariant &value) const = 0;
};

} // namespace vo::data
