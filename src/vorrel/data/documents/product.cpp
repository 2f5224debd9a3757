// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/documents/product.h>

#include <vorrel/data/context/context.h>
#include <vorrel/data/properties/linkeddocumentproperty.h>
#include <vorrel/data/properties/mapproperty.h>

namespace vo::data {

struct Product::Private
{
    Product *const q;
    MapProperty<double> prices { "prices", q };
    LinkedDocumentProperty<ProductGroup> productGroup { "productGroup", q };
};

Product::Product(Context *context)
    : CatalogItem(context)
    , d(new Private { this })
{ }

Product::~Product() = default;

VO_DEFINE_PROPERTY(Product, vo::data::ProductGroup *, productGroup, setProductGroup)

QJsonObject Product::prices() const
{
    return d->prices.object();
}

double Product::price() const
{
    return getPrice(context()->country());
}

bool Product::setPrice(double price)
{
    return setPrice(context()->country(), price);
}

double Product::getPrice(const QString &country) const
{
    return d->prices.get().value(country);
}

bool Product::setPrice(const QString &country, double price)
{
    return d->prices.set(country, price);
}

} // namespace vo::data

#include "moc_product.cpp"
