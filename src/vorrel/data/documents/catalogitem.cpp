// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/documents/catalogitem.h>

#include <vorrel/data/properties/langstringproperty.h>

namespace vo::data {

namespace {
constexpr bool multiline = true;
} // namespace

struct CatalogItem::Private
{
    CatalogItem *const q;
    LangStringProperty name { "name", q };
    LangStringProperty description { "description", q, multiline };
};

CatalogItem::CatalogItem(Context *context)
    : LinkedDocument(context)
    , d(new Private { this })
{ }

CatalogItem::~CatalogItem() = default;

VO_DEFINE_PROPERTY(CatalogItem, QString, name, setName)
VO_DEFINE_PROPERTY(CatalogItem, QString, description, setDescription)

QString CatalogItem::label() const
{
    return name();
}

} // namespace vo::data

#include "moc_catalogitem.cpp"
