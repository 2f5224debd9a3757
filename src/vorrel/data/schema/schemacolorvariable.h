// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/schema/schemavariable.h>

#include <QtGui/QColor>

namespace vo::data {

/// A variable for a colour. A stored text that is no colour reads as the default.
class VORREL_DATACORE_EXPORT SchemaColorVariable : public vo::data::SchemaVariable
{
    Q_OBJECT
    QML_NAMED_ELEMENT(SchemaColorVariable)
    QML_UNCREATABLE("Inline documents are made by the properties that hold them")
    Q_CLASSINFO("DocumentType", "color")
    Q_CLASSINFO("ValueEditor", "SchemaColorValueEditor.qml")
    Q_CLASSINFO("CondensedValueEditor", "SchemaColorValueEditor.qml")
    VO_PROPERTY(QColor, color, setColor)

public:
    explicit SchemaColorVariable(Document *parent);
    ~SchemaColorVariable() override;

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
