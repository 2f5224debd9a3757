// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/schema/schemaproductlinkvariable.h>

#include <vorrel/data/base/jsonkeys_p.h>
#include <vorrel/data/documents/product.h>

namespace vo::data {

SchemaProductLinkVariable::SchemaProductLinkVariable(Document *parent)
    : SchemaLinkVariable(parent, QLatin1String("schemavalue:productlink"), jsonkeys::product)
{ }

SchemaProductLinkVariable::~SchemaProductLinkVariable() = default;

QVariant SchemaProductLinkVariable::variant(Document *document) const
{
    return QVariant::fromValue(qobject_cast<Product *>(document));
}

QVariant SchemaProductLinkVariable::fromJson(const QJsonObject &object) const
{
    const bool older = object.contains(jsonkeys::productLink);
    const QJsonValue json = object.value(older ? jsonkeys::productLink : jsonkeys::product);
    return json.isString() || json.isNull() ? link(json) : refuse(object);
}

} // namespace vo::data

#include "moc_schemaproductlinkvariable.cpp"
