// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/core/linkeddocument.h>
#include <vorrel/data/properties/propertymacros.h>

namespace vo::data {

/// Something that stands in a catalogue. Name and description are texts in several languages.
class VORREL_DATACORE_EXPORT CatalogItem : public vo::data::LinkedDocument
{
    Q_OBJECT
    QML_NAMED_ELEMENT(CatalogItem)
    QML_UNCREATABLE("Documents are made by a Context")
    VO_PROPERTY(QString, name, setName)
    VO_PROPERTY(QString, description, setDescription)
    Q_PROPERTY(QString label READ label NOTIFY nameChanged STORED false)

public:
    explicit CatalogItem(Context *context);
    ~CatalogItem() override;

    /// The name.
    [[nodiscard]] QString label() const override;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
