// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/documents/keyvaluestore.h>

#include <vorrel/data/base/plainvariant_p.h>
#include <vorrel/data/properties/mapproperty.h>

namespace vo::data {

struct KeyValueStore::Private
{
    KeyValueStore *const q;
    MapProperty<QVariant> data { "data", q };
};

KeyValueStore::KeyValueStore(Context *context)
    : LinkedDocument(context)
    , d(new Private { this })
{ }

KeyValueStore::~KeyValueStore() = default;

QJsonObject KeyValueStore::data() const
{
    return d->data.object();
}

QStringList KeyValueStore::keys() const
{
    return d->data.get().keys();
}

QVariant KeyValueStore::value(const QString &key) const
{
    return d->data.get().value(key);
}

bool KeyValueStore::setValue(const QString &key, const QVariant &value)
{
    // What is kept is what will be stored: never a pointer to an object that may go.
    return d->data.set(key, QJsonValue::fromVariant(plainVariant(value)).toVariant());
}

bool KeyValueStore::clearValue(const QString &key)
{
    return d->data.remove(key);
}

} // namespace vo::data

#include "moc_keyvaluestore.cpp"
