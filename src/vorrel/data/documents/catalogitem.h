// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/documents/imageasset.h>

#include <QtCore/QVariantMap>

namespace vo::data {

/// Something that stands in a catalogue. Name and description are texts in several languages, the
/// images are ImageAsset objects by keys. The primary image, which stands for the item, may be one
/// of them or another.
class VORREL_DATACORE_EXPORT CatalogItem : public vo::data::LinkedDocument
{
    Q_OBJECT
    QML_NAMED_ELEMENT(CatalogItem)
    QML_UNCREATABLE("Documents are made by a Context")
    VO_PROPERTY(QString, name, setName)
    VO_PROPERTY(QString, description, setDescription)
    VO_READONLY_PROPERTY(QVariantMap, images)
    VO_PROPERTY(vo::data::ImageAsset *, primaryImage, setPrimaryImage)
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
