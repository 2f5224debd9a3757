// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/schema/schemaenumerationvariable.h>

#include <vorrel/data/base/jsonkeys_p.h>
#include <vorrel/data/base/qmlobjectlist_p.h>
#include <vorrel/data/properties/inlinedocumentlistproperty.h>
#include <vorrel/data/properties/property.h>
#include <vorrel/data/schema/schemavalueform_p.h>

#include <algorithm>

namespace vo::data {

namespace {

const SchemaValueForm<int> &form()
{
    static const SchemaValueForm<int> form(QLatin1String("schemavalue:enumeration"),
                                           jsonkeys::index);
    return form;
}

} // namespace

struct SchemaEnumerationVariable::Private
{
    SchemaEnumerationVariable *const q;
    Property<int> index { "index", q };
    InlineDocumentListProperty<SchemaEnumerationEntry> entries { "entries", q };
};

SchemaEnumerationVariable::SchemaEnumerationVariable(Document *parent)
    : SchemaVariable(parent)
    , d(new Private { this })
{
    connect(this, &SchemaEnumerationVariable::indexChanged, this,
            &SchemaVariable::defaultValueChanged);
}

SchemaEnumerationVariable::~SchemaEnumerationVariable() = default;

VO_DEFINE_PROPERTY(SchemaEnumerationVariable, int, index, setIndex)

QList<SchemaEnumerationEntry *> SchemaEnumerationVariable::entries() const
{
    return d->entries.get();
}

QQmlListProperty<SchemaEnumerationEntry> SchemaEnumerationVariable::entryList()
{
    return ReadOnlyObjectList<SchemaEnumerationEntry>::property(this, [](QObject *variable) {
        return static_cast<SchemaEnumerationVariable *>(variable)->entries();
    });
}

SchemaEnumerationEntry *SchemaEnumerationVariable::addEntry(const QString &name)
{
    if (accessLevel() < WriteAccess) {
        return nullptr;
    }
    auto *entry = static_cast<SchemaEnumerationEntry *>(
        InlineDocument::create(typeOf(SchemaEnumerationEntry::staticMetaObject), this));
    entry->setName(name);
    return insertEntry(entry) ? entry : nullptr;
}

bool SchemaEnumerationVariable::insertEntry(SchemaEnumerationEntry *entry, int index)
{
    return d->entries.insert(entry, index);
}

bool SchemaEnumerationVariable::removeEntry(SchemaEnumerationEntry *entry)
{
    return d->entries.remove(entry);
}

QVariant SchemaEnumerationVariable::defaultValue() const
{
    return index();
}

QVariant SchemaEnumerationVariable::fromJson(const QJsonObject &object) const
{
    return form().fromJson(*this, object);
}

QJsonObject SchemaEnumerationVariable::toJson(const QVariant &value) const
{
    return form().toJson(value);
}

bool SchemaEnumerationVariable::valuesEqual(const QVariant &a, const QVariant &b) const
{
    return form().equal(a, b);
}

QVariant SchemaEnumerationVariable::sanitize(const QVariant &value) const
{
    const int count = d->entries.count();
    return count == 0 ? -1 : std::min(value.toInt(), count - 1);
}

} // namespace vo::data

#include "moc_schemaenumerationvariable.cpp"
