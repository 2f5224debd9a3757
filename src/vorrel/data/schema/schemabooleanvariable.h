// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/schema/schemavariable.h>

namespace vo::data {

/// A variable that is true or false.
class VORREL_DATACORE_EXPORT SchemaBooleanVariable : public vo::data::SchemaVariable
{
    Q_OBJECT
    QML_NAMED_ELEMENT(SchemaBooleanVariable)
    QML_UNCREATABLE("Inline documents are made by the properties that hold them")
    Q_CLASSINFO("DocumentType", "boolean")
    Q_CLASSINFO("ValueEditor", "SchemaBooleanValueEditor.qml")
    Q_CLASSINFO("CondensedValueEditor", "SchemaBooleanValueEditor.qml")
    VO_PROPERTY(bool, boolean, setBoolean)

public:
    explicit SchemaBooleanVariable(Document *parent);
    ~SchemaBooleanVariable() override;

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
