// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/schema/schemalinkvariable.h>

namespace vo::data {

/// A variable for an image, a video or a PDF file.
class VORREL_DATACORE_EXPORT SchemaMediaLinkVariable : public vo::data::SchemaLinkVariable
{
    Q_OBJECT
    QML_NAMED_ELEMENT(SchemaMediaLinkVariable)
    QML_UNCREATABLE("Inline documents are made by the properties that hold them")
    Q_CLASSINFO("DocumentType", "medialink")
    Q_CLASSINFO("ValueEditor", "SchemaMediaLinkValueEditor.qml")
    Q_CLASSINFO("CondensedValueEditor", "SchemaMediaLinkValueEditor.qml")
    VO_PROPERTY(QString, mediaType, setMediaType)

public:
    explicit SchemaMediaLinkVariable(Document *parent);
    ~SchemaMediaLinkVariable() override;

    /// Invalid for documents of other types.
    [[nodiscard]] QVariant sanitize(const QVariant &value) const override;

protected:
    [[nodiscard]] QVariant variant(Document *document) const override;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
