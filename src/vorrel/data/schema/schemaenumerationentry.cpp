// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/schema/schemaenumerationentry.h>

#include <vorrel/data/properties/property.h>

namespace vo::data {

struct SchemaEnumerationEntry::Private
{
    SchemaEnumerationEntry *const q;
    Property<QString> name { "name", q };
};

SchemaEnumerationEntry::SchemaEnumerationEntry(Document *parent)
    : InlineDocument(parent)
    , d(new Private { this })
{
    connect(this, &SchemaEnumerationEntry::nameChanged, this,
            &SchemaEnumerationEntry::labelChanged);
}

SchemaEnumerationEntry::~SchemaEnumerationEntry() = default;

VO_DEFINE_PROPERTY(SchemaEnumerationEntry, QString, name, setName)

QString SchemaEnumerationEntry::label() const
{
    return name();
}

bool SchemaEnumerationEntry::setLabel(const QString &label)
{
    return setName(label);
}

} // namespace vo::data

#include "moc_schemaenumerationentry.cpp"
