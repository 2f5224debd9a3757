// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/schema/schemalinkvariable.h>

namespace vo::data {

/// A variable for any document.
class VORREL_DATACORE_EXPORT SchemaDocumentLinkVariable : public vo::data::SchemaLinkVariable
{
    Q_OBJECT
    QML_NAMED_ELEMENT(SchemaDocumentLinkVariable)
    QML_UNCREATABLE("Inline documents are made by the properties that hold them")
    Q_CLASSINFO("DocumentType", "documentlink")
    Q_CLASSINFO("ValueEditor", "SchemaDocumentLinkValueEditor.qml")
    Q_CLASSINFO("CondensedValueEditor", "SchemaDocumentLinkValueEditor.qml")

public:
    explicit SchemaDocumentLinkVariable(Document *parent);
    ~SchemaDocumentLinkVariable() override;

protected:
    [[nodiscard]] QVariant variant(Document *document) const override;
};

} // namespace vo::data
