// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/schema/schemalinkvariable.h>

namespace vo::data {

/// A variable for a product.
class VORREL_DATACORE_EXPORT SchemaProductLinkVariable : public vo::data::SchemaLinkVariable
{
    Q_OBJECT
    QML_NAMED_ELEMENT(SchemaProductLinkVariable)
    QML_UNCREATABLE("Inline documents are made by the properties that hold them")
    Q_CLASSINFO("DocumentType", "productlink")
    Q_CLASSINFO("ValueEditor", "SchemaProductLinkValueEditor.qml")
    Q_CLASSINFO("CondensedValueEditor", "SchemaProductLinkValueEditor.qml")

public:
    explicit SchemaProductLinkVariable(Document *parent);
    ~SchemaProductLinkVariable() override;

    /// Reads the older form, under another key, as well.
    [[nodiscard]] QVariant fromJson(const QJsonObject &object) const override;

protected:
    [[nodiscard]] QVariant variant(Document *document) const override;
};

} // namespace vo::data
