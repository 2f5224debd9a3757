// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/documents/tag.h>

#include <vorrel/data/properties/property.h>

namespace vo::data {

struct Tag::Private
{
    Tag *const q;
    Property<QString> name { "name", q };
    Property<QUrl> icon { "icon", q };
    Property<QStringList> applicableTypes { "applicableTypes", q };
};

Tag::Tag(Context *context)
    : LinkedDocument(context)
    , d(new Private { this })
{ }

Tag::~Tag() = default;

VO_DEFINE_PROPERTY(Tag, QString, name, setName)
VO_DEFINE_PROPERTY(Tag, QUrl, icon, setIcon)
VO_DEFINE_PROPERTY(Tag, QStringList, applicableTypes, setApplicableTypes)

bool Tag::appliesToType(Document * /*document*/) const
{
    return true;
}

} // namespace vo::data

#include "moc_tag.cpp"
