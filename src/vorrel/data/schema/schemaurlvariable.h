// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/schema/schemavariable.h>

#include <QtCore/QUrl>

namespace vo::data {

/// A variable for an address on the web or of a file.
class VORREL_DATACORE_EXPORT SchemaUrlVariable : public vo::data::SchemaVariable
{
    Q_OBJECT
    QML_NAMED_ELEMENT(SchemaUrlVariable)
    QML_UNCREATABLE("Inline documents are made by the properties that hold them")
    Q_CLASSINFO("DocumentType", "url")
    Q_CLASSINFO("ValueEditor", "SchemaUrlValueEditor.qml")
    Q_CLASSINFO("CondensedValueEditor", "SchemaCondensedUrlValueEditor.qml")
    VO_PROPERTY(QUrl, url, setUrl)

public:
    explicit SchemaUrlVariable(Document *parent);
    ~SchemaUrlVariable() override;

    [[nodiscard]] QVariant defaultValue() const override;
    [[nodiscard]] QVariant fromJson(const QJsonObject &object) const override;
    [[nodiscard]] QJsonObject toJson(const QVariant &value) const override;
    [[nodiscard]] bool valuesEqual(const QVariant &a, const QVariant &b) const override;

    /// The text of the address.
    [[nodiscard]] QVariant sanitize(const QVariant &value) const override;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
