// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/core/inlinedocument.h>
#include <vorrel/data/properties/propertymacros.h>

namespace vo::data {

/// One choice of a SchemaEnumerationVariable.
class VORREL_DATACORE_EXPORT SchemaEnumerationEntry : public vo::data::InlineDocument
{
    Q_OBJECT
    QML_NAMED_ELEMENT(SchemaEnumerationEntry)
    QML_UNCREATABLE("Inline documents are made by the properties that hold them")
    Q_CLASSINFO("DocumentType", "schemaenumerationentry")
    Q_PROPERTY(QString label READ label WRITE setLabel NOTIFY nameChanged STORED false)

    /// The same as label.
    VO_PROPERTY(QString, name, setName)

public:
    explicit SchemaEnumerationEntry(Document *parent);
    ~SchemaEnumerationEntry() override;

    [[nodiscard]] QString label() const override;
    bool setLabel(const QString &label);

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
