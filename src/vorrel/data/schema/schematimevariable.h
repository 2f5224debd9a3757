// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/schema/schemavariable.h>

#include <QtCore/QTime>

namespace vo::data {

/// A variable for a time of day, to the second.
class VORREL_DATACORE_EXPORT SchemaTimeVariable : public vo::data::SchemaVariable
{
    Q_OBJECT
    QML_NAMED_ELEMENT(SchemaTimeVariable)
    QML_UNCREATABLE("Inline documents are made by the properties that hold them")
    Q_CLASSINFO("DocumentType", "time")
    Q_CLASSINFO("ValueEditor", "SchemaTimeValueEditor.qml")
    Q_CLASSINFO("CondensedValueEditor", "SchemaCondensedTimeValueEditor.qml")
    VO_PROPERTY(QTime, time, setTime)

public:
    explicit SchemaTimeVariable(Document *parent);
    ~SchemaTimeVariable() override;

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
