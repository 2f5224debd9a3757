// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/schema/schemavariable.h>

namespace vo::data {

/// A variable for a number with decimals, within bounds: the limits of a double at first. minimum,
/// the default value and maximum stay in this order, whichever is set.
class VORREL_DATACORE_EXPORT SchemaRealVariable : public vo::data::SchemaVariable
{
    Q_OBJECT
    QML_NAMED_ELEMENT(SchemaRealVariable)
    QML_UNCREATABLE("Inline documents are made by the properties that hold them")
    Q_CLASSINFO("DocumentType", "real")
    Q_CLASSINFO("ValueEditor", "SchemaRealValueEditor.qml")
    Q_CLASSINFO("CondensedValueEditor", "SchemaCondensedRealValueEditor.qml")
    VO_PROPERTY(double, real, setReal)
    VO_PROPERTY(double, minimum, setMinimum)
    VO_PROPERTY(double, maximum, setMaximum)
    VO_PROPERTY(QString, unit, setUnit)
    VO_PROPERTY(int, decimals, setDecimals)

public:
    explicit SchemaRealVariable(Document *parent);
    ~SchemaRealVariable() override;

    Q_INVOKABLE void resetMinimum();
    Q_INVOKABLE void resetMaximum();

    /// Whether \p value is the bound.
    Q_INVOKABLE [[nodiscard]] bool isMinimum(double value) const;
    Q_INVOKABLE [[nodiscard]] bool isMaximum(double value) const;

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
