// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/documents/producttag.h>

#include <vorrel/data/properties/linkeddocumentproperty.h>

namespace vo::data {

struct ProductTag::Private
{
    ProductTag *const q;
    LinkedDocumentProperty<TagGroup> tagGroup { "tagGroup", q };
};

ProductTag::ProductTag(Context *context)
    : Tag(context)
    , d(new Private { this })
{ }

ProductTag::~ProductTag() = default;

VO_DEFINE_PROPERTY(ProductTag, vo::data::TagGroup *, tagGroup, setTagGroup)

} // namespace vo::data

#include "moc_producttag.cpp"
