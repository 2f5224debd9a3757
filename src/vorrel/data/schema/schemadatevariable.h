// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/schema/schemavariable.h>

#include <QtCore/QDate>

namespace vo::data {

/// A variable for a day.
class VORREL_DATACORE_EXPORT SchemaDateVariable : public vo::data::SchemaVariable
{
    Q_OBJECT
    QML_NAMED_ELEMENT(SchemaDateVariable)
    QML_UNCREATABLE("Inline documents are made by the properties that hold them")
    Q_CLASSINFO("DocumentType", "date")
    Q_CLASSINFO("ValueEditor", "SchemaDateValueEditor.qml")
    Q_CLASSINFO("CondensedValueEditor", "SchemaCondensedDateValueEditor.qml")
    VO_PROPERTY(QDate, date, setDate)

public:
    explicit SchemaDateVariable(Document *parent);
    ~SchemaDateVariable() override;

    [[nodiscard]] QVariant defaultValue() const override;
    [[nodiscard]] QVariant fromJson(const QJsonObject &object) const override;
    [[nodiscard]] QJsonObject toJson(const QVariant &value) const override;
    [[nodiscard]] bool valuesEqual(const QVariant &a, const QVariant &b) const override;
    [[nodiscard]] QVariant sanitize(const QVariant &value) const override;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
