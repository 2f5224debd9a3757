// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/documents/catalogitem.h>

#include <vorrel/data/properties/langstringproperty.h>
#include <vorrel/data/properties/linkeddocumentmapproperty.h>

#include <optional>

namespace vo::data {

namespace {
constexpr bool multiline = true;
constexpr QLatin1String primaryKey("primary");
} // namespace

struct CatalogItem::Private
{
    CatalogItem *const q;
    LangStringProperty name { "name", q };
    LangStringProperty description { "description", q, multiline };
    LinkedDocumentMapProperty<ImageAsset> images { "images", q };
    std::optional<QByteArray> primaryId {}; // as last told
};

CatalogItem::CatalogItem(Context *context)
    : LinkedDocument(context)
    , d(new Private { this })
{
    connect(this, &CatalogItem::imagesChanged, this, &CatalogItem::updatePrimaryImage);
}

CatalogItem::~CatalogItem() = default;

VO_DEFINE_PROPERTY(CatalogItem, QString, name, setName)
VO_DEFINE_PROPERTY(CatalogItem, QString, description, setDescription)

QVariantMap CatalogItem::images() const
{
    QVariantMap images;
    const QMap<QString, ImageAsset *> all = d->images.get();
    for (auto it = all.begin(); it != all.end(); ++it) {
        images.insert(it.key(), QVariant::fromValue(it.value()));
    }
    return images;
}

ImageAsset *CatalogItem::primaryImage() const
{
    return d->images.value(primaryKey);
}

bool CatalogItem::setPrimaryImage(ImageAsset *image)
{
    return d->images.insert(primaryKey, image);
}

void CatalogItem::updatePrimaryImage()
{
    const ImageAsset *image = primaryImage();
    const QByteArray id = image ? image->id() : QByteArray();
    if (d->primaryId != id) {
        d->primaryId = id;
        Q_EMIT primaryImageChanged();
    }
}

QString CatalogItem::label() const
{
    return name();
}

} // namespace vo::data

#include "moc_catalogitem.cpp"
