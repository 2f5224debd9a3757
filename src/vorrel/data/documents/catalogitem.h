// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/documents/imageasset.h>

#include <QtCore/QVariantMap>

namespace vo::data {

/// Something that stands in a catalogue. Name and description are texts in several languages, the
/// images are ImageAsset objects by keys. The one under "primary" stands for the item.
class VORREL_DATACORE_EXPORT CatalogItem : public vo::data::LinkedDocument
{
    Q_OBJECT
    QML_NAMED_ELEMENT(CatalogItem)
    QML_UNCREATABLE("Documents are made by a Context")
    VO_PROPERTY(QString, name, setName)
    VO_PROPERTY(QString, description, setDescription)
    VO_READONLY_PROPERTY(QVariantMap, images)
    Q_PROPERTY(vo::data::ImageAsset *primaryImage READ primaryImage WRITE setPrimaryImage NOTIFY
                   primaryImageChanged STORED false)
    Q_PROPERTY(QString label READ label NOTIFY nameChanged STORED false)

public:
    explicit CatalogItem(Context *context);
    ~CatalogItem() override;

    /// The name.
    [[nodiscard]] QString label() const override;

    [[nodiscard]] ImageAsset *primaryImage() const;

    /// Puts the image under "primary"; it leaves the key under which it was before. Null removes
    /// the one that is there.
    bool setPrimaryImage(ImageAsset *image);

Q_SIGNALS:
    void primaryImageChanged();

private:
    void updatePrimaryImage();

    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
