// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/documents/catalogitem.h>

#include <vorrel/data/properties/langstringproperty.h>
#include <vorrel/data/properties/linkeddocumentmapproperty.h>
#include <vorrel/data/properties/linkeddocumentproperty.h>

namespace vo::data {

namespace {
constexpr bool multiline = true;
} // namespace

struct CatalogItem::Private
{
    CatalogItem *const q;
    LangStringProperty name { "name", q };
    LangStringProperty description { "description", q, multiline };
    LinkedDocumentMapProperty<ImageAsset> images { "images", q };
    LinkedDocumentProperty<ImageAsset> primaryImage { "primaryImage", q };
};

CatalogItem::CatalogItem(Context *context)
    : LinkedDocument(context)
    , d(new Private { this })
{ }

CatalogItem::~CatalogItem() = default;

VO_DEFINE_PROPERTY(CatalogItem, QString, name, setName)
VO_DEFINE_PROPERTY(CatalogItem, QString, description, setDescription)

VO_DEFINE_PROPERTY(CatalogItem, vo::data::ImageAsset *, primaryImage, setPrimaryImage)

QVariantMap CatalogItem::images() const
{
    QVariantMap images;
    const QMap<QString, ImageAsset *> all = d->images.get();
    for (auto it = all.begin(); it != all.end(); ++it) {
        images.insert(it.key(), QVariant::fromValue(it.value()));
    }
    return images;
}

QString CatalogItem::label() const
{
    return name();
}

} // namespace vo::data

#include "moc_catalogitem.cpp"
