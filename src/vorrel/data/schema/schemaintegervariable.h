// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/schema/schemavariable.h>

namespace vo::data {

/// A variable for a whole number within bounds: those of 32 bits at first. minimum, the default
/// value and maximum stay in this order, whichever is set. Bounds may be wider, but what a document
/// stores has 32 bits: a value beyond them is cut.
class VORREL_DATACORE_EXPORT SchemaIntegerVariable : public vo::data::SchemaVariable
{
    Q_OBJECT
    QML_NAMED_ELEMENT(SchemaIntegerVariable)
    QML_UNCREATABLE("Inline documents are made by the properties that hold them")
    Q_CLASSINFO("DocumentType", "integer")
    Q_CLASSINFO("ValueEditor", "SchemaIntegerValueEditor.qml")
    Q_CLASSINFO("CondensedValueEditor", "SchemaCondensedIntegerValueEditor.qml")
    VO_PROPERTY(qlonglong, integer, setInteger)
    VO_PROPERTY(qlonglong, minimum, setMinimum)
    VO_PROPERTY(qlonglong, maximum, setMaximum)
    VO_PROPERTY(QString, unit, setUnit)

public:
    explicit SchemaIntegerVariable(Document *parent);
    ~SchemaIntegerVariable() override;

    Q_INVOKABLE void resetMinimum();
    Q_INVOKABLE void resetMaximum();

    /// Whether \p value is the bound.
    Q_INVOKABLE [[nodiscard]] bool isMinimum(qlonglong value) const;
    Q_INVOKABLE [[nodiscard]] bool isMaximum(qlonglong value) const;

    [[nodiscard]] QVariant defaultValue() const override;
    [[nodiscard]] QVariant fromJson(const QJsonObject &object) const override;
    [[nodiscard]] QJsonObject toJson(const QVariant &value) const override;
    [[nodiscard]] bool valuesEqual(const QVariant &a, const QVariant &b) const override;

    /// Within the bounds; what is no number counts as 0.
    [[nodiscard]] QVariant sanitize(const QVariant &value) const override;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
