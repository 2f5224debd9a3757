// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/schema/schemavariable.h>

namespace vo::data {

/// A variable for a text, of one line unless it is multiline. It is stored as a text in several
/// languages that has German only, whatever the language of the Context is.
class VORREL_DATACORE_EXPORT SchemaStringVariable : public vo::data::SchemaVariable
{
    Q_OBJECT
    QML_NAMED_ELEMENT(SchemaStringVariable)
    QML_UNCREATABLE("Inline documents are made by the properties that hold them")
    Q_CLASSINFO("DocumentType", "string")
    Q_CLASSINFO("ValueEditor", "SchemaStringValueEditor.qml")
    Q_CLASSINFO("CondensedValueEditor", "SchemaCondensedStringValueEditor.qml")
    VO_PROPERTY(QString, string, setString)
    VO_PROPERTY(bool, multiline, setMultiline)

public:
    explicit SchemaStringVariable(Document *parent);
    ~SchemaStringVariable() override;

    [[nodiscard]] QVariant defaultValue() const override;
    [[nodiscard]] QVariant fromJson(const QJsonObject &object) const override;
    [[nodiscard]] QJsonObject toJson(const QVariant &value) const override;
    [[nodiscard]] bool valuesEqual(const QVariant &a, const QVariant &b) const override;

    /// With a blank for each line break, unless it is multiline.
    [[nodiscard]] QVariant sanitize(const QVariant &value) const override;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
